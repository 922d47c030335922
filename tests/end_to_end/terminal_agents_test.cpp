// The full-screen menu of the real program, on a real systemd user manager.
#include <gtest/gtest.h>

#include "end_to_end/terminal_session.h"
#include "tools/child_process.h"
#include "tools/user_manager_rig.h"

namespace {

const std::string kEnter = "\r";

/// The agents stand near the end of the menu.
bool walkToAgent(TerminalSession& terminal, const std::string& text) {
  if (!terminal.waitFor("q Quit")) return false;
  terminal.send("\033[F");
  const auto atTheEnd = [&] { return terminal.screen().reversed() == " Quit Vorda\n"; };
  return terminal.waitUntil(atTheEnd) && terminal.walkTo(text, true);
}

class TerminalAgents : public testing::Test {
 protected:
  void SetUp() override {
    if (!rig_.reason().empty()) GTEST_SKIP() << rig_.reason();
    rig_.addService("vorda-gateway", execStart(playProcess({}, {"gateway"})) + "\nRestart=always");
  }
  UserManagerRig rig_;
};

TEST_F(TerminalAgents, AreLoadedAndUnloaded) {
  TerminalSession terminal({.height = 50});
  const auto isClosed = [&] { return terminal.screen().find("Unload vorda-gateway?").x < 0; };
  ASSERT_TRUE(walkToAgent(terminal, "vorda-gateway  ·  off ↺"));
  ASSERT_TRUE(terminal.press(kEnter, "Start / load"));
  ASSERT_TRUE(terminal.press(kEnter, "vorda-gateway  ·  on · pid "));
  EXPECT_EQ(terminal.screen().find("[ OK ]").x, -1) << "a success is silent";

  ASSERT_TRUE(walkToAgent(terminal, "vorda-gateway"));
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

TEST_F(TerminalAgents, FailAfterAWhileWhereTheManagerHangs) {
  TerminalSession terminal({.height = 50});
  ASSERT_TRUE(walkToAgent(terminal, "vorda-gateway  ·  off ↺"));
  ASSERT_TRUE(terminal.press(kEnter, "Start / load"));
  rig_.pause();
  EXPECT_TRUE(terminal.press(kEnter, "Failed to load vorda-gateway"));
  rig_.resume();
  EXPECT_TRUE(terminal.press(kEnter, [&] { return terminal.screen().find("Failed to").x < 0; }));
  EXPECT_TRUE(terminal.press("?", "[ OK ]")) << "the interface is back";
}

}  // namespace
