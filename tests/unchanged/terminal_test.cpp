// The terminal while nothing changes: what is on the screen stays.
#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "frontends/terminal/screen.h"
#include "frontends/terminal/terminal_front_end.h"
#include "tools/allocation_counter.h"
#include "ui/status_bar_controller.h"
#include "unchanged/busy_machine.h"

namespace {

/// Nobody sits at it: it lets the time pass that it may, and ends after some refreshes.
class LonelyScreen : public terminal::Screen {
 public:
  struct Wait {
    std::uint64_t allocations;  ///< since the wait before
    int drawings;
  };
  std::vector<Wait> waits;

  const terminal::Look& look() const override { return look_; }
  terminal::Size size() const override { return {200, 50}; }
  void draw(const terminal::CellGrid&) override { ++drawings_; }
  void ring() override { ++drawings_; }
  double now() const override { return now_; }
  terminal::Input nextInput(std::optional<double> seconds) override {
    constexpr std::size_t kRefreshes = 20;
    waits.push_back({allocationCount() - before_, std::exchange(drawings_, 0)});
    if (waits.size() > kRefreshes) return {.kind = terminal::Input::Kind::ended};
    now_ += seconds.value_or(0);
    machine().clock += 5'000'000'000;
    forgetQuestions();
    before_ = allocationCount();
    return {};
  }

 private:
  terminal::Look look_;
  double now_ = 1000;
  int drawings_ = 0;
  std::uint64_t before_ = 0;
};

TEST(UnchangedTerminal, PaintsNothingAndAllocatesNothing) {
  scriptBusyMachine();
  LonelyScreen screen;
  screen.waits.reserve(32);
  terminal::TerminalFrontEnd frontEnd(screen);
  StatusBarController controller(frontEnd, Alert{});
  frontEnd.run(controller);

  ASSERT_EQ(screen.waits.size(), 21U);
  EXPECT_EQ(screen.waits.front().drawings, 1);
  for (std::size_t i = 1; i < screen.waits.size(); ++i) {
    EXPECT_EQ(screen.waits[i].drawings, 0) << i;
  }
  // The watch over the memory remembers a minute.
  for (std::size_t i = 16; i < screen.waits.size(); ++i) {
    EXPECT_EQ(screen.waits[i].allocations, 0U) << i;
  }
}

}  // namespace
