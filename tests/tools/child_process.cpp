#include "tools/child_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>
#include <utility>

#include "tools/argument_pointers.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kLongestStart{60};

/// Whether `fd` gives "ready\n" before the patience is over.
bool saysReady(int fd) {
  const auto deadline = Clock::now() + kLongestStart;
  std::string heard;
  while (heard.find("ready\n") == std::string::npos) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd waiting{fd, POLLIN, 0};
    if (left.count() <= 0 || poll(&waiting, 1, static_cast<int>(left.count())) <= 0) return false;
    char bytes[256];
    const ssize_t count = read(fd, bytes, sizeof bytes);
    if (count <= 0) return false;
    heard.append(bytes, static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace

ChildProcess::ChildProcess(std::vector<std::string> argv) {
  start(std::move(argv));
}

void ChildProcess::start(std::vector<std::string> argv) {
  int output[2];
  ASSERT_EQ(pipe2(output, O_CLOEXEC), 0);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  const int error = posix_spawn(&pid_, argv.front().c_str(), &actions, nullptr,
                                argumentPointers(argv).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(output[1]);
  const bool ready = error == 0 && saysReady(output[0]);
  close(output[0]);
  if (error != 0) pid_ = -1;
  ASSERT_EQ(error, 0) << argv[0];
  ASSERT_TRUE(ready) << argv[0] << " did not get ready";
  // The kernel tells in ticks when a process started: what is asked about it within the first one
  // may be about an earlier process with its pid, and is not believed.
  std::this_thread::sleep_for(std::chrono::microseconds(1'000'000 / sysconf(_SC_CLK_TCK)));
}

ChildProcess::~ChildProcess() {
  end();
}

void ChildProcess::end() {
  if (pid_ < 1) return;
  kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
  pid_ = -1;
}

bool ChildProcess::runs() const {
  siginfo_t info = {};
  return pid_ > 0 &&
         waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         info.si_pid == 0;
}

std::optional<int> ChildProcess::wait() {
  const auto deadline = Clock::now() + kLongestStart;
  while (pid_ > 0 && Clock::now() < deadline) {
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) == pid_) {
      pid_ = -1;
      return status;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return std::nullopt;
}

void ChildProcess::waitUntilZombie() const {
  siginfo_t info = {};
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT), 0);
}

std::vector<std::string> playProcess(std::vector<std::string> options,
                                     std::vector<std::string> arguments) {
  std::vector<std::string> command{PLAY_PROCESS};
  command.insert(command.end(), options.begin(), options.end());
  command.emplace_back("--");
  command.insert(command.end(), arguments.begin(), arguments.end());
  return command;
}
