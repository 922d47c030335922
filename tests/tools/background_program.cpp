#include "tools/background_program.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "tools/argument_pointers.h"

namespace {

constexpr std::chrono::seconds kPatience{60};

std::vector<std::string> changedEnvironment(const BackgroundProgram::Environment& changes) {
  std::vector<std::string> result;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text = *entry;
    if (!changes.contains(text.substr(0, text.find('=')))) result.push_back(text);
  }
  for (const auto& [name, value] : changes) {
    if (value) result.push_back(name + "=" + *value);
  }
  return result;
}

}  // namespace

BackgroundProgram::BackgroundProgram(std::vector<std::string> argv, const Environment& changes) {
  int output[2];
  if (pipe2(output, O_CLOEXEC) != 0) return;
  output_ = output[0];
  error_ = memfd_create("standard error", MFD_CLOEXEC);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, error_, STDERR_FILENO);
  std::vector<std::string> environment = changedEnvironment(changes);
  const int failure =
      posix_spawnp(&pid_, argv[0].c_str(), &actions, nullptr, argumentPointers(argv).data(),
                   argumentPointers(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  close(output[1]);
  if (failure != 0) pid_ = -1;
}

BackgroundProgram::~BackgroundProgram() {
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  close(output_);
  close(error_);
}

std::optional<char> BackgroundProgram::nextByte(Clock::time_point deadline) const {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
  pollfd waiting{output_, POLLIN, 0};
  if (left.count() <= 0 || ::poll(&waiting, 1, static_cast<int>(left.count())) <= 0) {
    return std::nullopt;
  }
  char byte = 0;
  return read(output_, &byte, 1) == 1 ? std::optional(byte) : std::nullopt;
}

std::string BackgroundProgram::firstLine() {
  const auto deadline = Clock::now() + kPatience;
  std::string line;
  while (const auto byte = nextByte(deadline)) {
    if (*byte == '\n') return line;
    line += *byte;
  }
  return {};
}

std::string BackgroundProgram::output() {
  const auto deadline = Clock::now() + kPatience;
  std::string text;
  while (const auto byte = nextByte(deadline)) text += *byte;
  return text;
}

std::optional<int> BackgroundProgram::poll() {
  int status = 0;
  if (pid_ > 0 && waitpid(pid_, &status, WNOHANG) == pid_) {
    pid_ = -1;
    status_ = status;
  }
  return status_;
}

std::optional<int> BackgroundProgram::wait() {
  const auto deadline = Clock::now() + kPatience;
  while (!poll() && pid_ > 0 && Clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return status_;
}

std::string BackgroundProgram::errorOutput() {
  wait();
  std::string text(static_cast<std::size_t>(lseek(error_, 0, SEEK_END)), '\0');
  const ssize_t count = pread(error_, text.data(), text.size(), 0);
  text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
  return text;
}

void BackgroundProgram::signal(int number) const {
  if (pid_ > 0) kill(pid_, number);
}

int runProgram(std::vector<std::string> argv, const BackgroundProgram::Environment& changes) {
  BackgroundProgram program(std::move(argv), changes);
  const std::optional<int> status = program.wait();
  return status && WIFEXITED(*status) ? WEXITSTATUS(*status) : -1;
}
