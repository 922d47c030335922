#include "frontends/terminal/held_stderr.h"

#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>

#include "frontends/terminal/terminal_remains.h"
#include "frontends/terminal/terminal_rescue.h"

namespace {

TEST(HeldStderr, AreShownAtTheEnd) {
  const TerminalRemains remains = remainsOf([](const termios&) {
    {
      const terminal::HeldStderr held;
      dprintf(2, "error;");
      dprintf(1, "picture;");
    }
    dprintf(2, "later");
  });
  EXPECT_EQ(remains.bytes, "picture;error;later");
}

TEST(HeldStderr, AreShownWhenTheProgramCrashes) {
  const TerminalRemains remains = remainsOf([](const termios& ordinary) {
    const terminal::HeldStderr held;
    terminal::TerminalRescue rescue(0, ordinary, "<reset>");
    rescue.arm();
    dprintf(2, "last words");
    raise(SIGABRT);
  });
  EXPECT_EQ(remains.bytes, "<reset>last words");
}

TEST(HeldStderr, AreBounded) {
  const TerminalRemains remains = remainsOf([](const termios&) {
    const terminal::HeldStderr held;
    const std::string kilobyte(1024, 'x');
    int kept = 0;
    while (kept < 200 && write(2, kilobyte.data(), kilobyte.size()) > 0) ++kept;
    _exit(kept);  // not shown: a terminal takes only so much unread
  });
  EXPECT_EQ(remains.exitCode, 64);
}

}  // namespace
