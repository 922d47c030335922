#include "frontends/terminal/terminal_rescue.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "frontends/terminal/held_errors.h"

namespace {

/// What the work, run in a program of its own on a pseudo-terminal, left there.
struct Remains {
  std::string bytes;
  int signal = 0;
  int exitCode = 0;
  bool echoes = false;
};

template <typename Work>
Remains remainsOf(Work work) {
  Remains remains;
  int master = -1;
  int slave = -1;
  EXPECT_EQ(openpty(&master, &slave, nullptr, nullptr, nullptr), 0);
  const pid_t child = fork();
  if (child == 0) {
    for (const int standard : {0, 1, 2}) dup2(slave, standard);
    termios ordinary{};
    tcgetattr(0, &ordinary);
    termios raw = ordinary;
    cfmakeraw(&raw);
    tcsetattr(0, TCSANOW, &raw);
    work(ordinary);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  remains.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  remains.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
  termios modes{};
  tcgetattr(master, &modes);
  remains.echoes = (modes.c_lflag & ECHO) != 0;
  close(slave);
  char buffer[4096];
  for (ssize_t count = 0; (count = read(master, buffer, sizeof buffer)) > 0;) {
    remains.bytes.append(buffer, static_cast<std::size_t>(count));
  }
  close(master);
  return remains;
}

/// Returns only for a depth that is never reached.
int overflow(volatile int* depth) {
  volatile char frame[4096];
  frame[0] = 1;
  *depth = *depth + 1;
  if (*depth < 0) return 0;
  return overflow(depth) + frame[0];
}

TEST(TerminalRescue, WorksWhenTheStackIsUsedUp) {
  const Remains remains = remainsOf([](const termios& ordinary) {
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
  const Remains remains = remainsOf([](const termios& ordinary) {
    terminal::TerminalRescue rescue(0, ordinary, "<reset>");
    rescue.arm();
    rescue.disarm();
    raise(SIGABRT);
  });
  EXPECT_EQ(remains.bytes, "");
  EXPECT_FALSE(remains.echoes);
  EXPECT_EQ(remains.signal, SIGABRT);
}

TEST(HeldErrors, AreShownAtTheEnd) {
  const Remains remains = remainsOf([](const termios&) {
    {
      const terminal::HeldErrors held;
      dprintf(2, "error;");
      dprintf(1, "picture;");
    }
    dprintf(2, "later");
  });
  EXPECT_EQ(remains.bytes, "picture;error;later");
}

TEST(HeldErrors, AreShownWhenTheProgramCrashes) {
  const Remains remains = remainsOf([](const termios& ordinary) {
    const terminal::HeldErrors held;
    terminal::TerminalRescue rescue(0, ordinary, "<reset>");
    rescue.arm();
    dprintf(2, "last words");
    raise(SIGABRT);
  });
  EXPECT_EQ(remains.bytes, "<reset>last words");
}

TEST(HeldErrors, AreBounded) {
  const Remains remains = remainsOf([](const termios&) {
    const terminal::HeldErrors held;
    const std::string kilobyte(1024, 'x');
    int kept = 0;
    while (kept < 200 && write(2, kilobyte.data(), kilobyte.size()) > 0) ++kept;
    _exit(kept);  // not shown: a terminal takes only so much unread
  });
  EXPECT_EQ(remains.exitCode, 64);
}

}  // namespace
