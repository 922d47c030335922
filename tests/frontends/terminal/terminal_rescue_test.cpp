#include "frontends/terminal/terminal_rescue.h"

#include <gtest/gtest.h>
#include <termios.h>

#include <csignal>

#include "frontends/terminal/terminal_remains.h"

namespace {

/// Returns only for a depth that is never reached.
int overflow(volatile int* depth) {
  volatile char frame[4096];
  frame[0] = 1;
  *depth = *depth + 1;
  if (*depth < 0) return 0;
  return overflow(depth) + frame[0];
}

TEST(TerminalRescue, WorksWhenTheStackIsUsedUp) {
  const TerminalRemains remains = remainsOf([](const termios& ordinary) {
    terminal::TerminalRescue rescue(0, ordinary, "<reset>");
    rescue.arm();
    volatile int depth = 0;
    overflow(&depth);
  });
  EXPECT_EQ(remains.bytes.substr(0, 7), "<reset>");
  EXPECT_TRUE(remains.echoes);
  EXPECT_NE(remains.signal, 0);
}

TEST(TerminalRescue, DoesNothingWhenTheTerminalIsAsItShouldBe) {
  const TerminalRemains remains = remainsOf([](const termios& ordinary) {
    terminal::TerminalRescue rescue(0, ordinary, "<reset>");
    rescue.arm();
    rescue.disarm();
    raise(SIGABRT);
  });
  EXPECT_EQ(remains.bytes, "");
  EXPECT_FALSE(remains.echoes);
  EXPECT_EQ(remains.signal, SIGABRT);
}

}  // namespace
