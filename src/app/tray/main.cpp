// vorda-tray: the program on a desktop. With --settings, as its desktop entry's action starts it,
// it opens the Settings window at once.
//
// It ends with 0 when the user quits it, or when another instance runs already and has shown
// itself; with 1, after one line on standard error, when it can't be shown at all.
#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "app/branding.h"
#include "app/settings_view.h"
#include "app/tray/controller_delegate.h"
#include "frontends/qt/display.h"
#include "frontends/qt/qt_front_end.h"
#include "platform/linux/heap.h"
#include "ui/status_bar_controller.h"

namespace {

constexpr std::chrono::milliseconds kBusPatience{1000};

NamedBus openBus() {
  NamedBus named{SessionBus::open(kBusPatience), nullptr};
  if (named.bus) {
    named.name = std::make_unique<InstanceName>(*named.bus);
  } else {
    // Qt would wait for it, for half a minute and more.
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
  }
  return named;
}

int run(NamedBus bus, bool opensSettings) {
  const auto application = openDisplay();
  QtFrontEnd frontEnd(std::move(bus), SettingsView::lines());
  StatusBarController controller(frontEnd, Branding::aboutAlert());
  ControllerDelegate delegate(controller);
  frontEnd.setDelegate(&delegate);
  if (opensSettings) frontEnd.showSettings();
  const int status = QApplication::exec();
  frontEnd.setDelegate(nullptr);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  platform::keepHeapSmall();
  const bool opensSettings = argc > 1 && std::string_view(argv[1]) == "--settings";
  NamedBus bus = openBus();
  if (bus.name) {
    switch (bus.name->claim()) {
      case InstanceName::Outcome::owned:
        break;
      case InstanceName::Outcome::activated:
        return EXIT_SUCCESS;
      case InstanceName::Outcome::silent:
        std::fputs("vorda: another instance is running and does not answer\n", stderr);
        return EXIT_FAILURE;
    }
  }
  return run(std::move(bus), opensSettings);
}
