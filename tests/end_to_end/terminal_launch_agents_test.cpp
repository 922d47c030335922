// The full-screen menu of the real program, on a real systemd user manager.
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "end_to_end/terminal_session.h"
#include "tools/background_program.h"
#include "tools/child_process.h"
#include "tools/forked.h"
#include "tools/temp_folder.h"
#include "tools/user_manager_rig.h"

namespace {

/// The launch agents stand near the end of the menu.
bool walkToLaunchAgent(TerminalSession& terminal, const std::string& text) {
  if (!terminal.waitFor("q Quit")) return false;
  const auto atTheEnd = [&] { return terminal.screen().reversed() == " Quit Vorda\n"; };
  // On a busy machine the manager's answer may come after its time, and is taken at a refresh.
  return terminal.press("\033[F", atTheEnd) && terminal.waitFor(text) &&
         terminal.walkTo(text, true);
}

class TerminalLaunchAgents : public testing::Test {
 protected:
  void SetUp() override {
    if (!rig_.reason().empty()) GTEST_SKIP() << rig_.reason();
    rig_.addService("vorda-gateway", execStart(playProcess({}, {"gateway"})) + "\nRestart=always");
  }
  UserManagerRig rig_;
};

TEST_F(TerminalLaunchAgents, AreLoadedAndUnloaded) {
  TerminalSession terminal({.height = 50});
  const auto isClosed = [&] { return terminal.screen().find("Unload vorda-gateway?").x < 0; };
  ASSERT_TRUE(walkToLaunchAgent(terminal, "vorda-gateway  ·  off ↺"));
  ASSERT_TRUE(terminal.press(kEnter, "Start / load"));
  ASSERT_TRUE(terminal.press(kEnter, "vorda-gateway  ·  on · pid "));
  EXPECT_EQ(terminal.screen().find("[ OK ]").x, -1) << "a success is silent";

  ASSERT_TRUE(walkToLaunchAgent(terminal, "vorda-gateway"));
  ASSERT_TRUE(terminal.press(kEnter, "Stop / unload"));
  ASSERT_TRUE(terminal.press(kEnter, "Unload vorda-gateway?"));
  EXPECT_TRUE(terminal.waitFor("Stops it and prevents KeepAlive restart."));
  EXPECT_TRUE(terminal.waitFor("vorda-gateway.service"));
  terminal.send("\t");
  ASSERT_TRUE(terminal.press(kEnter, isClosed));
  EXPECT_TRUE(terminal.waitFor("vorda-gateway  ·  on")) << "refused";

  ASSERT_TRUE(terminal.press(kEnter, "Stop / unload"));
  ASSERT_TRUE(terminal.press(kEnter, "Unload vorda-gateway?"));
  EXPECT_TRUE(terminal.press(kEnter, "vorda-gateway  ·  off ↺"));
}

/// Opens the launch agent's row, and chooses what it offers.
bool choose(TerminalSession& terminal, const std::string& row, const std::string& command,
            const std::string& shown) {
  return walkToLaunchAgent(terminal, row) && terminal.press(kEnter, command) &&
         terminal.press(kEnter, shown);
}

bool answersKeys(TerminalSession& terminal) {
  terminal.send("?");
  if (!terminal.waitFor("[ OK ]")) return false;
  terminal.send(kEscape);
  return terminal.waitUntilGone("[ OK ]");
}

TEST_F(TerminalLaunchAgents, ThatTakeTheirTimeToStopAreNotWaitedFor) {
  const TempFolder folder;
  const std::string script = folder / "stop";
  folder.write("stop", "until [ -e \"$0.now\" ]; do sleep 0.02; done\n");
  rig_.addService("vorda-gateway", execStart(playProcess({}, {"gateway"})) +
                                       "\nRestart=always\nExecStop=/bin/sh " + script);
  TerminalSession terminal({.height = 50});
  ASSERT_TRUE(
      choose(terminal, "vorda-gateway  ·  off ↺", "Start / load", "vorda-gateway  ·  on · pid "));
  ASSERT_TRUE(choose(terminal, "vorda-gateway", "Stop / unload", "Unload vorda-gateway?"));
  ASSERT_TRUE(terminal.press(kEnter, "vorda-gateway  ·  stopping… ↺"));
  EXPECT_TRUE(answersKeys(terminal));
  EXPECT_TRUE(terminal.waitFor("vorda-gateway  ·  stopping… ↺"));
  folder.write("stop.now", "");
  EXPECT_TRUE(terminal.waitFor("vorda-gateway  ·  off ↺"));
  EXPECT_EQ(terminal.screen().find("[ OK ]").x, -1) << "a success is silent";
}

TEST_F(TerminalLaunchAgents, AreStartedWhenTheManagerGoesOn) {
  TerminalSession terminal({.height = 50});
  ASSERT_TRUE(walkToLaunchAgent(terminal, "vorda-gateway  ·  off ↺"));
  ASSERT_TRUE(terminal.press(kEnter, "Start / load"));
  rig_.pause();
  EXPECT_TRUE(terminal.press(kEnter, "vorda-gateway  ·  starting… ↺"));
  EXPECT_TRUE(answersKeys(terminal));
  rig_.resume();
  EXPECT_TRUE(terminal.waitUntilGone("starting…"));
  EXPECT_EQ(terminal.screen().find("[ OK ]").x, -1) << "a success is silent";
}

TEST_F(TerminalLaunchAgents, ThatAreStartingDoNotKeepItFromEnding) {
  TerminalSession terminal({.height = 50});
  ASSERT_TRUE(walkToLaunchAgent(terminal, "vorda-gateway  ·  off ↺"));
  ASSERT_TRUE(terminal.press(kEnter, "Start / load"));
  rig_.pause();
  EXPECT_TRUE(terminal.press(kEnter, "vorda-gateway  ·  starting… ↺"));
  terminal.send("q");
  EXPECT_EQ(terminal.waitForEnd(), 0);
  rig_.resume();
}

TEST_F(TerminalLaunchAgents, ThatDoNotStartAreToldOf) {
  rig_.addService("vorda-gateway", "Type=exec\nExecStart=/nonexistent\nRestart=always");
  TerminalSession terminal({.height = 50});
  ASSERT_TRUE(
      choose(terminal, "vorda-gateway  ·  off ↺", "Start / load", "Failed to load vorda-gateway"));
}

TEST_F(TerminalLaunchAgents, WithoutARowAreUnloadedByTheirProcess) {
  const std::string name = "unloaded" + std::to_string(getpid());
  const std::string kProgram = "MCP: " + name;  // what mcp-server-NAME is called
  // No AI tooling by its name, and not kept alive.
  rig_.addService("plain-service", execStart(playProcess({}, {"mcp-server-" + name, "stdio"})));
  ASSERT_EQ(runProgram({"systemctl", "--user", "start", "plain-service"}), 0);
  TerminalSession terminal({.height = 50});
  ASSERT_TRUE(terminal.filter("plain-service"));
  EXPECT_TRUE(terminal.waitFor("(nothing matches)")) << "no row of its own";
  ASSERT_TRUE(terminal.press(kEscape, [&] { return terminal.screen().find("Filter:").x < 0; }));
  ASSERT_TRUE(terminal.filter(name));
  ASSERT_TRUE(terminal.walkTo(kProgram));
  ASSERT_TRUE(terminal.press(kEnter, "Unload plain-service"));
  ASSERT_TRUE(terminal.walkTo("Unload plain-service"));
  ASSERT_TRUE(terminal.press(kEnter, "Unload plain-service?"));
  EXPECT_TRUE(terminal.press(kEnter, [&] { return terminal.screen().find(kProgram).x < 0; }));
  EXPECT_NE(runProgram({"systemctl", "--user", "--quiet", "is-active", "plain-service"}), 0);
}

/// As after "su -": the manager is there, and the environment does not say where.
TEST_F(TerminalLaunchAgents, AreFoundWithoutTheVariables) {
  const std::string runtime = getenv("XDG_RUNTIME_DIR");
  TerminalSession::Options options{.height = 50,
                                   .environment = {{"XDG_RUNTIME_DIR", std::nullopt},
                                                   {"DBUS_SESSION_BUS_ADDRESS", std::nullopt}}};
  options.prepare = [&runtime] {
    const std::string own = "/run/user/" + std::to_string(getuid());
    return makeMountsPrivate() && mount("none", "/run", "tmpfs", 0, nullptr) == 0 &&
           std::filesystem::create_directories(own) &&
           mount(runtime.c_str(), own.c_str(), nullptr, MS_BIND, nullptr) == 0;
  };
  TerminalSession terminal(options);
  EXPECT_TRUE(walkToLaunchAgent(terminal, "vorda-gateway  ·  off ↺"));
}

TEST_F(TerminalLaunchAgents, AreNotShownWhereNobodyCanBeAsked) {
  rig_.end();
  TerminalSession terminal({.height = 50});
  ASSERT_TRUE(terminal.waitFor("Top RAM"));  // the frame stands before the first look
  terminal.settle();
  EXPECT_EQ(terminal.screen().find("— Auto-start agents —").x, -1);
  EXPECT_EQ(terminal.screen().find("vorda-gateway").x, -1) << "whether it runs is not known";
}

}  // namespace
