// The full-screen menu of the real program, on real processes.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "end_to_end/terminal_session.h"
#include "text/base64.h"
#include "tools/child_process.h"
#include "tools/forked.h"
#include "tools/temp_folder.h"

namespace {

/// A name that nothing else on this machine has.
std::string uniqueName() {
  static int count = 0;
  return "e2e" + std::to_string(getpid()) + "n" + std::to_string(++count);
}

/// The command of a process that the menu lists whatever its size: a model server.
std::vector<std::string> modelServer(const std::string& name, std::vector<std::string> options) {
  options.insert(options.end(), {"--memory", "120"});
  return playProcess(options, {"llama-server", "--model", "/models/" + name + ".gguf"});
}

/// In the submenu that is open.
bool selectQuit(TerminalSession& terminal) {
  terminal.send("\033[H");
  return terminal.waitUntil([&] {
    const std::string selected = terminal.screen().reversed();
    return selected.find("Quit") != std::string::npos &&
           selected.find("Force Quit") == std::string::npos;
  });
}

std::function<bool()> isGone(const TerminalSession& terminal, const std::string& text) {
  return [&terminal, text] { return terminal.screen().find(text).x < 0; };
}

class TerminalActions : public testing::Test {
 protected:
  const std::string name = uniqueName();
};

TEST_F(TerminalActions, ShowARealProcess) {
  const ChildProcess server(modelServer(name, {}));
  TerminalSession terminal;
  ASSERT_TRUE(terminal.walkTo(name));
  EXPECT_TRUE(terminal.waitFor("pid " + std::to_string(server.pid()))) << "its tooltip";
}

TEST_F(TerminalActions, QuitAProcessByItsSubmenu) {
  ChildProcess server(modelServer(name, {}));
  TerminalSession terminal;
  ASSERT_TRUE(terminal.walkTo(name));
  ASSERT_TRUE(terminal.press(kEnter, "Force Quit"));
  EXPECT_NE(terminal.screen().find(name).x, -1) << "the submenu stands beside its row";
  ASSERT_TRUE(selectQuit(terminal));
  ASSERT_TRUE(terminal.press(kEnter, isGone(terminal, "Force Quit")));
  const auto status = server.wait();
  ASSERT_TRUE(status);
  EXPECT_EQ(WTERMSIG(*status), SIGTERM);
  EXPECT_TRUE(terminal.waitUntilGone(name));
}

TEST_F(TerminalActions, AskBeforeAForceQuit) {
  ChildProcess server(modelServer(name, {"--ignore-term"}));
  TerminalSession terminal;
  const auto ask = [&] {
    return terminal.walkTo(name) && terminal.press(kEnter, "Full details") &&
           terminal.walkTo("Force Quit (", true) &&
           terminal.press(kEnter, "This cannot be undone.");
  };
  ASSERT_TRUE(ask());
  EXPECT_TRUE(terminal.waitFor("PID " + std::to_string(server.pid())));
  terminal.send(kEscape);
  EXPECT_TRUE(terminal.waitUntilGone("This cannot be undone."));
  EXPECT_TRUE(server.runs()) << "refused: it still runs";

  ASSERT_TRUE(ask());
  EXPECT_EQ(terminal.screen().reversed().find("[ Cancel ]"), std::string::npos);
  ASSERT_TRUE(terminal.press(kEnter, isGone(terminal, "This cannot be undone.")));
  const auto status = server.wait();
  ASSERT_TRUE(status);
  EXPECT_EQ(WTERMSIG(*status), SIGKILL);
  EXPECT_TRUE(terminal.waitUntilGone(name));
}

TEST_F(TerminalActions, ShowDetails) {
  const ChildProcess server(modelServer(name, {}));
  TerminalSession terminal;
  ASSERT_TRUE(terminal.walkTo(name));
  ASSERT_TRUE(terminal.press(kEnter, "Full details"));
  EXPECT_TRUE(terminal.press(kEnter, "PID: " + std::to_string(server.pid())));
  EXPECT_TRUE(terminal.waitFor("llama-server --model"));
  EXPECT_TRUE(terminal.press(kEnter, isGone(terminal, "PID: ")));
}

TEST_F(TerminalActions, CopyACommandAndShowItPlain) {
  const ChildProcess server(modelServer(name, {}));
  const std::string command = "llama-server --model /models/" + name + ".gguf";
  TerminalSession terminal;
  ASSERT_TRUE(terminal.walkTo(name));
  ASSERT_TRUE(terminal.press(
      "c", [&] { return terminal.screen().clipboard() == text::inBase64(command); }));

  ASSERT_TRUE(terminal.press(kEnter, "Full details"));
  ASSERT_TRUE(terminal.press(kEnter, "c copies the command, C shows it"));
  ASSERT_TRUE(terminal.press("C", "Enter goes back."));
  EXPECT_FALSE(terminal.screen().onAlternateScreen());
  EXPECT_FALSE(terminal.screen().mouseIsReported()) << "it marks text";
  EXPECT_EQ(terminal.screen().find(command).x, 0) << "without borders";
  ASSERT_TRUE(terminal.press(kEnter, "PID: " + std::to_string(server.pid())));
  EXPECT_TRUE(terminal.screen().onAlternateScreen());
}

TEST_F(TerminalActions, EndWhileACommandIsShownPlain) {
  const ChildProcess server(modelServer(name, {}));
  TerminalSession terminal;
  ASSERT_TRUE(terminal.walkTo(name));
  ASSERT_TRUE(terminal.press("C", "Enter goes back."));
  kill(terminal.pid(), SIGTERM);
  EXPECT_TRUE(terminal.waitForEnd());
}

TEST_F(TerminalActions, SayWhereTheSelectedProcessWorks) {
  const ChildProcess server(modelServer(name, {}));
  TerminalSession terminal({.width = 200});
  ASSERT_TRUE(terminal.walkTo(name));
  EXPECT_TRUE(terminal.waitFor(" · in " + std::filesystem::current_path().string()));
}

TEST_F(TerminalActions, ForgetAProcessThatEndsWhileItsSubmenuIsOpen) {
  ChildProcess server(modelServer(name, {}));
  TerminalSession terminal;
  ASSERT_TRUE(terminal.walkTo(name));
  ASSERT_TRUE(terminal.press(kEnter, "Full details"));
  server.end();
  ASSERT_TRUE(selectQuit(terminal));
  EXPECT_TRUE(terminal.press(kEnter, isGone(terminal, name)));
  EXPECT_EQ(terminal.screen().find("[ OK ]").x, -1) << "already gone is no failure";
}

TEST_F(TerminalActions, WorkWithTheMouse) {
  ChildProcess server(modelServer(name, {}));
  TerminalSession terminal;
  ASSERT_TRUE(terminal.filter(name));  // where others' rows don't move it
  const auto click = [&](const std::string& what) {
    return TerminalSession::clickAt(terminal.screen().find(what));
  };
  ASSERT_TRUE(terminal.press(click("★ LM Studio: " + name), "Force Quit"));  // not the summary
  ASSERT_TRUE(terminal.press(click("Force Quit"), "[ Cancel ]"));
  ASSERT_TRUE(terminal.press(click("[ Force Quit ]"), isGone(terminal, "[ Cancel ]")));
  const auto status = server.wait();
  ASSERT_TRUE(status);
  EXPECT_EQ(WTERMSIG(*status), SIGKILL);
}

TEST_F(TerminalActions, ExplainWhatIsProtected) {
  if (getuid() != 0) GTEST_SKIP() << "only root can play another user's process";
  constexpr uid_t kOrdinary = 65534;
  const TempFolder folder;  // where an ordinary user may run the program from
  const auto program = folder / "vorda";
  std::filesystem::copy_file(VORDA, program);
  const ChildProcess server(modelServer(name, {"--user", std::to_string(kStranger)}));

  TerminalSession terminal({.user = kOrdinary, .program = program});
  ASSERT_TRUE(terminal.walkTo(name));
  EXPECT_TRUE(terminal.waitFor("🔒"));
  const std::string owner = "uid " + std::to_string(kStranger);
  EXPECT_TRUE(terminal.press(kEnter, "Protected (" + owner + ") — cannot quit from Vorda"));
  EXPECT_EQ(terminal.screen().find("Force Quit").x, -1);
  EXPECT_TRUE(terminal.press(kEnter, "Protected: cannot Force Quit from Vorda."));
  EXPECT_TRUE(terminal.waitFor("Owner: " + owner));
}

TEST_F(TerminalActions, ShowHostileNamesHarmlessly) {
  const std::string hostile = name + "\n\033[2J\033]0;owned\007.gguf";
  const ChildProcess server(
      playProcess({"--memory", "120"}, {"llama-server", "--model", "/models/" + hostile}));
  TerminalSession terminal;
  ASSERT_TRUE(terminal.walkTo(name));
  EXPECT_NE(terminal.screen().find("Vorda²").x, -1) << "the screen was not cleared";
}

TEST_F(TerminalActions, ShowWhereACommandLineGoesOn) {
  const ChildProcess server(playProcess({"--memory", "120", "--repeat", "900", "x"},
                                        {"llama-server", "--model", "/models/" + name}));
  TerminalSession terminal({.width = 100, .height = 50});
  ASSERT_TRUE(terminal.walkTo(name));
  ASSERT_TRUE(terminal.press(kEnter, "Full details…"));
  ASSERT_TRUE(terminal.walkTo("Full details…"));
  EXPECT_TRUE(
      terminal.press(kEnter, "The command line goes on: these are its first 800 characters."));
}

}  // namespace
