// The tray on a scripted machine that is short of memory: what only such a machine makes it do.
#include <QApplication>
#include <chrono>
#include <memory>
#include <utility>

#include "fakes/scripted_platform.h"
#include "frontends/qt/display.h"
#include "frontends/qt/qt_front_end.h"
#include "ui/status_bar_controller.h"

int main() {
  resetMachine();
  machine().memory.availableBytes = 1e10;
  machine().memory.stalls = platform::MemoryStalls{60, 20};
  machine().processes.push_back(
      {.pid = 71, .arguments = {"/opt/<i>train & co"}, .footprintMB = 4096});

  NamedBus bus{SessionBus::open(std::chrono::seconds(60)), nullptr};
  if (bus.bus) bus.name = std::make_unique<InstanceName>(*bus.bus);
  const auto application = openDisplay();
  QtFrontEnd frontEnd(std::move(bus), {});
  StatusBarController controller(frontEnd, Alert{}, {.refresh = 0.2});
  frontEnd.reportTo(&controller);
  // Time goes by faster here.
  const auto clock = frontEnd.every(0.1, [] { machine().clock += 1'000'000'000; });
  const int status = QApplication::exec();
  frontEnd.reportTo(nullptr);
  return status;
}
