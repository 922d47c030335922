#pragma once

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cstddef>
#include <string>

/// What the work, run in a program of its own on a pseudo-terminal, left there.
struct TerminalRemains {
  std::string bytes;  ///< on the screen, as they were sent
  int signal = 0;     ///< that ended it; 0 for none
  int exitCode = 0;   ///< 0 also where a signal ended it
  bool echoes = false;
};

/// Runs `work` on a raw terminal, with the modes that are ordinary there. What it writes has to
/// fit what a terminal takes unread, some 4,000 bytes.
template <typename Work>
TerminalRemains remainsOf(Work work) {
  TerminalRemains remains;
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
