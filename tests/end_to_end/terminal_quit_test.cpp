// What the full-screen menu of the real program tells of processes that were asked to quit.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <optional>
#include <string>

#include "end_to_end/terminal_session.h"
#include "tools/child_process.h"

namespace {

/// The command of a model server that nothing else on this machine is named like.
std::vector<std::string> serverOf(const std::string& name, std::vector<std::string> options) {
  options.insert(options.begin(), {"--memory", "120"});
  return playProcess(options, {"llama-server", "--model", "/models/" + name + ".gguf"});
}

class TerminalQuit : public testing::Test {
 protected:
  static std::string numbered(const std::string& name) { return name + std::to_string(getpid()); }
  static std::string pidOf(const ChildProcess& process) {
    return "(pid " + std::to_string(process.pid()) + ")";
  }
  bool isShown(const std::string& text) { return terminal().screen().find(text).x >= 0; }

  bool openSubmenu(const std::string& name, bool up = false) {
    return terminal().walkTo(name, up) && terminal().press(kEnter, "Full details");
  }
  bool quit(const std::string& name) {
    if (!openSubmenu(name)) return false;
    terminal().send("\033[H");
    const auto onQuit = [&] {
      const std::string selected = terminal().screen().reversed();
      return selected.find("Quit") != std::string::npos &&
             selected.find("Force Quit") == std::string::npos;
    };
    return terminal().waitUntil(onQuit) &&
           terminal().press(kEnter, [&] { return !isShown("Full details"); });
  }

  /// After the processes that it is to show: a later one is shown by the refresh after five
  /// seconds, when a walk to its row may be past it.
  void open() {
    session_.emplace(TerminalSession::Options{
        .width = 120,
        .height = 40,
        .waits = terminal::TerminalWaits{.hint = 0.2, .controller = {.refresh = 1, .quit = 0.2}}});
  }
  TerminalSession& terminal() { return *session_; }

 private:
  std::optional<TerminalSession> session_;
};

TEST_F(TerminalQuit, LeavesNothingSelectedThatTheSameKeyCouldEnd) {
  const std::string name = numbered("stubborn");
  const ChildProcess stubborn(serverOf(name, {"--ignore-term"}));
  const ChildProcess above(serverOf(numbered("above"), {"--memory", "140"}));
  const ChildProcess below(serverOf(numbered("below"), {"--memory", "100"}));
  open();
  ASSERT_TRUE(quit(name));
  for (int i = 0; i < 4; ++i) {
    ASSERT_TRUE(terminal().press(kEnter, "Nothing is selected."));
    ASSERT_TRUE(terminal().waitUntilGone("Nothing is selected."));
  }
  EXPECT_FALSE(isShown("Full details"));
  EXPECT_TRUE(isShown(name)) << "it came back";
  EXPECT_TRUE(stubborn.runs());
  EXPECT_TRUE(above.runs());
  EXPECT_TRUE(below.runs());
}

TEST_F(TerminalQuit, SaysOfEachProcessThatItIsStillRunning) {
  ChildProcess first(serverOf(numbered("first"), {"--ignore-term"}));
  ChildProcess second(serverOf(numbered("second"), {"--ignore-term"}));
  open();
  ASSERT_TRUE(quit(numbered("first")));
  terminal().send("\033[H");
  ASSERT_TRUE(quit(numbered("second")));
  bool saidOfFirst = false;
  bool saidOfSecond = false;
  EXPECT_TRUE(terminal().waitUntil([&] {
    const std::string end = ". Force Quit may end it.";
    saidOfFirst |= isShown(numbered("first") + " is still running " + pidOf(first) + end);
    saidOfSecond |= isShown(numbered("second") + " is still running " + pidOf(second) + end);
    return saidOfFirst && saidOfSecond;
  }));

  terminal().send("\033[H");
  ASSERT_TRUE(openSubmenu(numbered("second")));
  EXPECT_TRUE(isShown("Asked to quit "));
  terminal().send("\033");
  ASSERT_TRUE(terminal().waitUntilGone("Asked to quit "));
  kill(first.pid(), SIGKILL);
  first.waitUntilZombie();  // which is not still running
  EXPECT_TRUE(terminal().waitUntilGone(pidOf(first)));
  second.end();
  EXPECT_TRUE(terminal().waitUntilGone("is still running"));
}

TEST_F(TerminalQuit, SaysThatAProcessIsStopped) {
  const std::string name = numbered("asleep");
  ChildProcess asleep(serverOf(name, {}));
  siginfo_t news{};
  kill(asleep.pid(), SIGSTOP);
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(asleep.pid()), &news, WSTOPPED), 0);
  open();
  ASSERT_TRUE(quit(name));
  EXPECT_TRUE(terminal().waitFor(" is stopped " + pidOf(asleep)));
  terminal().send("\033[H");
  ASSERT_TRUE(openSubmenu(name));
  EXPECT_TRUE(isShown("It is stopped: it takes the request when it goes on"));
  terminal().send("\033");
  kill(asleep.pid(), SIGCONT);
  const auto status = asleep.wait();
  ASSERT_TRUE(status);
  EXPECT_EQ(WTERMSIG(*status), SIGTERM);
  EXPECT_TRUE(terminal().waitUntilGone("is stopped"));
}

}  // namespace
