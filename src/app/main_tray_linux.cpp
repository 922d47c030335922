// vorda-tray: the program on a desktop. With --settings, which an action of the desktop entry
// passes, it opens the Settings window at once.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "app/branding.h"
#include "app/settings_view.h"
#include "frontends/qt/run_tray.h"
#include "platform/heap.h"
#include "platform/linux/procfs.h"

int main(int argc, char** argv) {
  platform::keepHeapSmall();
  if (const std::string problem = platform::problemOfProc(); !problem.empty()) {
    std::fprintf(stderr, "vorda: %s\n", problem.c_str());
    return EXIT_FAILURE;
  }
  const bool opensSettings = argc > 1 && std::string_view(argv[1]) == "--settings";
  return runTray({Branding::aboutAlert(), SettingsView::lines()}, opensSettings);
}
