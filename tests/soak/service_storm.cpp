// The user's service manager and its bus: restarted, standing still, gone.
#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>

#include "soak/storm.h"
#include "tools/child_process.h"
#include "tools/user_manager_rig.h"

namespace {

class Services : public Storm {
 protected:
  void SetUp() override {
    rig_.emplace();
    if (!rig_->reason().empty()) GTEST_SKIP() << rig_->reason();
    rig_->addService("vorda-soak-gateway", "ExecStart=/bin/sleep 600\nRestart=always");
  }
  static bool shows(const LedProgram::Answer& answer) {
    return answer.menu.find("vorda-soak-gateway") != std::string::npos;
  }
  /// Refreshes; all that must be there is, whatever the manager does.
  void rideOn(LedProgram& program, double seconds) {
    ride(program, {server_.pid()}, seconds);
    EXPECT_TRUE(comesToShow(program, true)) << "what the manager said last stands";
  }
  /// On a busy machine the manager's answer may come after its time, and is taken later.
  static bool comesToShow(LedProgram& program, bool shown) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    while (shows(program.refresh()) != shown) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
  }
  static constexpr double kMinute = 60;
  static double parts(double count) { return std::min(share() / count, kMinute); }

  std::optional<UserManagerRig> rig_;
  const ChildProcess server_{playProcess({}, {"llama-server", "--model", "/models/soak.gguf"})};
};

TEST_F(Services, OfAManagerThatStandsStill) {
  LedProgram program;
  rideOn(program, 0);
  rig_->pause();
  rideOn(program, parts(2));
  rig_->resume();
  rideOn(program, parts(2));
}

TEST_F(Services, OfABusThatStandsStill) {
  LedProgram program;
  rideOn(program, 0);
  rig_->pauseBus();
  rideOn(program, parts(2));
  rig_->resumeBus();
  rideOn(program, parts(2));
}

TEST_F(Services, OfAManagerThatIsRestartedAndGone) {
  LedProgram program;
  rideOn(program, 0);
  for (int i = 0; i < 3; ++i) {
    rig_->restart();
    ASSERT_EQ(rig_->reason(), "");
    rideOn(program, parts(5));
  }
  rig_->end();
  ride(program, {server_.pid()}, parts(5));
  EXPECT_TRUE(comesToShow(program, false)) << "nobody can say whether it runs";
}

TEST_F(Services, OnTheTerminal) {
  TerminalSession terminal({.height = 50});
  ride(terminal, parts(4));
  rig_->pause();
  ride(terminal, parts(4));
  rig_->resume();
  rig_->restart();
  ride(terminal, parts(4));
  rig_->end();
  ride(terminal, parts(4));
}

}  // namespace
