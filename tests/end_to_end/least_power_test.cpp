// What the real program asks of the kernel, and never asks of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "end_to_end/terminal_session.h"
#include "fakes/row_name.h"
#include "tools/background_program.h"
#include "tools/child_process.h"
#include "tools/system_call_trace.h"
#include "tools/temp_folder.h"

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

class LeastPower : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string reason = SystemCallTrace::reason(); !reason.empty()) {
      GTEST_SKIP() << reason;
    }
  }
  LeastPower() { std::filesystem::copy_file(VORDA, alone()); }

  /// The program without the one that asks NVIDIA's driver, which it would start where that driver
  /// is installed.
  std::string alone() const { return folder_ / "vorda"; }

  const TempFolder folder_;
  // Of a process whose first thread has ended another one is asked.
  const ChildProcess others_{playProcess({"--end-first-thread"}, {"tgi", "--model", "a/b"})};
  const ChildProcess server_{playProcess({}, {"llama-server", "--model", "/models/m.gguf"})};
};

TEST_F(LeastPower, IsEnoughForTheText) {
  const SystemCallTrace trace(alone());
  ASSERT_EQ(runProgram({trace.program()}, {{"DISPLAY", {}}, {"WAYLAND_DISPLAY", {}}}), 0);
  EXPECT_THAT(trace.calls(), Contains(HasSubstr("cmdline")));
  EXPECT_THAT(trace.beyondLeastPower(), IsEmpty());
}

TEST_F(LeastPower, IsEnoughForTheTerminal) {
  const SystemCallTrace trace(alone());
  {
    TerminalSession terminal({.program = trace.program()});
    ASSERT_TRUE(terminal.waitFor("q Quit"));
    terminal.send("r");
    ASSERT_TRUE(terminal.press("?", "[ OK ]"));
    const auto isClosed = [&] { return terminal.screen().find("[ OK ]").x < 0; };
    ASSERT_TRUE(terminal.press("\r", isClosed));
    EXPECT_TRUE(terminal.press("q", [&] { return !terminal.screen().onAlternateScreen(); }));
    EXPECT_EQ(terminal.waitForEnd(), 0);
  }
  EXPECT_THAT(trace.calls(), Contains(HasSubstr("cmdline")));
  EXPECT_THAT(trace.beyondLeastPower(), IsEmpty());
}

struct PowerRow {
  const char* name;
  const char* command;
};

/// That the test sees what it looks for.
class MorePower : public LeastPower, public testing::WithParamInterface<PowerRow> {};

TEST_P(MorePower, IsSeen) {
  const SystemCallTrace trace(GetParam().command);
  runProgram({trace.program()});
  EXPECT_FALSE(trace.beyondLeastPower().empty());
}

INSTANTIATE_TEST_SUITE_P(Table, MorePower,
                         testing::Values(PowerRow{"Process", "sh -c 'true; true & wait'"},
                                         PowerRow{"Program", "env true"},
                                         PowerRow{"Signal", "sh -c 'kill -0 $$'"},
                                         PowerRow{"Writing", "sh -c ': > /dev/full'"},
                                         PowerRow{"Removing", "rm -f /nonexistent/file"},
                                         PowerRow{"ReadingALink", "readlink /proc/1/cwd"},
                                         PowerRow{"FollowingALink", "cat /proc/1/cwd/x"}),
                         rowName<PowerRow>);

}  // namespace
