// vorda-tray: the program on a desktop. With --settings, as its desktop entry's action starts it,
// it opens the Settings window at once.
#include <string_view>

#include "app/branding.h"
#include "app/settings_view.h"
#include "frontends/qt/run_tray.h"
#include "platform/linux/heap.h"

int main(int argc, char** argv) {
  platform::keepHeapSmall();
  const bool opensSettings = argc > 1 && std::string_view(argv[1]) == "--settings";
  return runTray({Branding::aboutAlert(), SettingsView::lines()}, opensSettings);
}
