// What is known only after a while appears in an open submenu, and in an open alert.

#include <gtest/gtest.h>

#include "frontends/terminal/terminal_menu_fixture.h"

namespace {

using Kind = terminal::Input::Kind;

/// "middle" was started by "big".
class TerminalFairShare : public TerminalMenu {
 protected:
  TerminalFairShare() {
    machine().find(20)->parent = 10;
    machine().find(10)->fairMB = 500;
    machine().find(20)->fairMB = 100;
    machine().fairSharesTakeTime = true;
  }
};

TEST_F(TerminalFairShare, AppearsInAnOpenSubmenu) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.wait(3);
  screen.then([&] {
    EXPECT_TRUE(shows("Runs as 2 processes  ·  up to 1.5 GB"));
    machine().fairSharesTakeTime = false;
  });
  screen.wait(1.5);
  screen.then([&] {
    EXPECT_TRUE(shows("Runs as 2 processes  ·  600 MB"));
    EXPECT_TRUE(selected("Full details")) << "the selection stays";
  });
  screen.type(U'r');  // the rows are made anew
  screen.wait(1.5);
  screen.then([&] { EXPECT_TRUE(shows("Runs as 2 processes  ·  600 MB")); });
  run();
}

TEST_F(TerminalFairShare, AppearsInOpenDetails) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_TRUE(shows("Owner: ada")) << "they open at once";
    EXPECT_FALSE(shows("fair share"));
    machine().fairSharesTakeTime = false;
  });
  screen.wait(1.5);
  screen.then([&] {
    EXPECT_TRUE(shows("Its fair share: 100 MB"));
    EXPECT_TRUE(shows("Its 2 processes together: 600 MB"));
    EXPECT_TRUE(shows("[ OK ]"));
  });
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_FALSE(shows("fair share")); });
  run();
}

}  // namespace
