// What the full-screen menu of the real program tells of processes that were asked to quit.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "end_to_end/terminal_session.h"
#include "tools/child_process.h"

namespace {

const std::string kEnter = "\r";

/// The command of a model server that nothing else on this machine is named like.
std::vector<std::string> modelServer(const std::string& name, std::vector<std::string> options) {
  options.insert(options.end(), {"--memory", "120"});
  return playProcess(options, {"llama-server", "--model", "/models/" + name + ".gguf"});
}

class TerminalQuit : public testing::Test {
 protected:
  static std::string numbered(const std::string& name) { return name + std::to_string(getpid()); }
  static std::string pidOf(const ChildProcess& process) {
    return "(pid " + std::to_string(process.pid()) + ")";
  }
  bool isShown(const std::string& text) const { return terminal_.screen().find(text).x >= 0; }

  bool openSubmenu(const std::string& name, bool up = false) {
    return terminal_.walkTo(name, up) && terminal_.press(kEnter, "Full details");
  }
  bool quit(const std::string& name) {
    if (!openSubmenu(name)) return false;
    terminal_.send("\033[H");
    const auto onQuit = [&] {
      const std::string selected = terminal_.screen().reversed();
      return selected.find("Quit") != std::string::npos &&
             selected.find("Force Quit") == std::string::npos;
    };
    return terminal_.waitUntil(onQuit) &&
           terminal_.press(kEnter, [&] { return !isShown("Full details"); });
  }

  TerminalSession terminal_{{.width = 120, .height = 40}};
};

TEST_F(TerminalQuit, LeavesNothingSelectedThatTheSameKeyCouldEnd) {
  const std::string name = numbered("stubborn");
  const ChildProcess stubborn(modelServer(name, {"--ignore-term"}));
  const ChildProcess above(modelServer(numbered("above"), {"--memory", "140"}));
  const ChildProcess below(modelServer(numbered("below"), {"--memory", "100"}));
  ASSERT_TRUE(quit(name));
  for (int i = 0; i < 4; ++i) {
    ASSERT_TRUE(terminal_.press(kEnter, "Nothing is selected."));
    ASSERT_TRUE(terminal_.waitUntilGone("Nothing is selected."));
  }
  EXPECT_FALSE(isShown("Full details"));
  EXPECT_TRUE(isShown(name)) << "it came back";
  EXPECT_TRUE(stubborn.runs());
  EXPECT_TRUE(above.runs());
  EXPECT_TRUE(below.runs());
}

TEST_F(TerminalQuit, SaysOfEachProcessThatItIsStillRunning) {
  ChildProcess first(modelServer(numbered("first"), {"--ignore-term"}));
  ChildProcess second(modelServer(numbered("second"), {"--ignore-term"}));
  ASSERT_TRUE(terminal_.waitFor(numbered("second")));
  ASSERT_TRUE(quit(numbered("first")));
  terminal_.send("\033[H");
  ASSERT_TRUE(quit(numbered("second")));
  bool saidOfFirst = false;
  bool saidOfSecond = false;
  EXPECT_TRUE(terminal_.waitUntil([&] {
    const std::string end = ". Force Quit may end it.";
    saidOfFirst |= isShown(numbered("first") + " is still running " + pidOf(first) + end);
    saidOfSecond |= isShown(numbered("second") + " is still running " + pidOf(second) + end);
    return saidOfFirst && saidOfSecond;
  }));

  terminal_.send("\033[H");
  ASSERT_TRUE(openSubmenu(numbered("second")));
  EXPECT_TRUE(isShown("Asked to quit "));
  terminal_.send("\033");
  ASSERT_TRUE(terminal_.waitUntilGone("Asked to quit "));
  kill(first.pid(), SIGKILL);
  first.waitUntilZombie();  // which is not still running
  EXPECT_TRUE(terminal_.waitUntilGone(pidOf(first)));
  second.end();
  EXPECT_TRUE(terminal_.waitUntilGone("is still running"));
}

TEST_F(TerminalQuit, SaysThatAProcessIsStopped) {
  const std::string name = numbered("asleep");
  ChildProcess asleep(modelServer(name, {}));
  siginfo_t news{};
  kill(asleep.pid(), SIGSTOP);
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(asleep.pid()), &news, WSTOPPED), 0);
  ASSERT_TRUE(quit(name));
  EXPECT_TRUE(terminal_.waitFor(" is stopped " + pidOf(asleep)));
  terminal_.send("\033[H");
  ASSERT_TRUE(openSubmenu(name));
  EXPECT_TRUE(isShown("It is stopped: it takes the request when it goes on"));
  terminal_.send("\033");
  kill(asleep.pid(), SIGCONT);
  const auto status = asleep.wait();
  ASSERT_TRUE(status);
  EXPECT_EQ(WTERMSIG(*status), SIGTERM);
  EXPECT_TRUE(terminal_.waitUntilGone("is stopped"));
}

}  // namespace
