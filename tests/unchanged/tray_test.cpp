// The tray while nothing changes and its menu is closed.
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "frontends/qt/qt_front_end.h"
#include "tools/allocation_counter.h"
#include "ui/status_bar_controller.h"
#include "unchanged/busy_machine.h"

namespace {

/// Its clock is wound by hand.
class WoundFrontEnd : public QtFrontEnd {
 public:
  using QtFrontEnd::QtFrontEnd;
  std::function<void()> tick;

  std::shared_ptr<ScheduledWork> every(double, std::function<void()> work) override {
    tick = std::move(work);
    return nullptr;
  }
};

TEST(UnchangedTray, BuildsNothingAndAllocatesNothing) {
  scriptBusyMachine();
  WoundFrontEnd frontEnd(NamedBus{}, {});
  StatusBarController controller(frontEnd, Alert{});
  frontEnd.reportTo(&controller);
  const auto refresh = [&frontEnd] {
    forgetQuestions();
    const std::uint64_t before = allocationCount();
    frontEnd.tick();
    return allocationCount() - before;
  };
  for (int i = 0; i < 3; ++i) refresh();
  const auto menu = controller.rootMenu();
  EXPECT_EQ(refresh(), 0U);
  EXPECT_EQ(controller.rootMenu(), menu);
}

}  // namespace
