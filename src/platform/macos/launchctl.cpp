#include "platform/macos/launchctl.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <system_error>
#include <thread>

#include "platform/macos/places.h"
#include "text/unicode.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): a Mac's headers lack it

namespace platform {
namespace {

/// A pipe whose ends no child process inherits by itself. They are -1 when there is no pipe.
class Pipe {
 public:
  Pipe() {
    if (pipe(ends_.data()) != 0) {
      ends_ = {-1, -1};
      return;
    }
    for (const int end : ends_) fcntl(end, F_SETFD, FD_CLOEXEC);
  }
  ~Pipe() {
    for (const int end : ends_) {
      if (end >= 0) close(end);
    }
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  int reading() const { return ends_[0]; }
  int writing() const { return ends_[1]; }
  /// Closes our copy, so that the pipe ends when the child does.
  void closeWriting() {
    close(ends_[1]);
    ends_[1] = -1;
  }

 private:
  std::array<int, 2> ends_{};
};

/// What a child does with its standard files before it runs its program.
class FileActions {
 public:
  FileActions(Capture capture, int output) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions_, output, STDERR_FILENO);
    if (capture == Capture::everything) {
      posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    } else {
      posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
  }
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

/// Starts launchctl; 0, or the error number.
int start(const std::vector<std::string>& arguments, const FileActions& actions, pid_t& pid) {
  std::vector<char*> words{const_cast<char*>(Places::kLaunchctl)};
  for (const std::string& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  return posix_spawn(&pid, Places::kLaunchctl, actions.get(), nullptr, words.data(), environ);
}

/// Waits for its end: the exit status, -1 for any other end; none at the deadline. Only in that
/// case it is still our child, and its pid nobody else's.
std::optional<int> statusAtEnd(pid_t pid, Clock::time_point deadline) {
  constexpr std::chrono::milliseconds kPause(1);
  for (;;) {
    int status = 0;
    const pid_t ended = waitpid(pid, &status, WNOHANG);
    if (ended == pid) return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    if (ended < 0 && errno != EINTR) return -1;
    if (Clock::now() >= deadline) return std::nullopt;
    std::this_thread::sleep_for(kPause);
  }
}

/// Kills it. Should the kernel hold on to it, it is not waited for any longer than this.
void end(pid_t pid) {
  constexpr std::chrono::milliseconds kGrace(500);
  kill(pid, SIGKILL);
  statusAtEnd(pid, Clock::now() + kGrace);
}

LaunchctlReply failure(int error) {
  return {-1, std::generic_category().message(error)};
}

}  // namespace

LaunchctlReply runLaunchctl(const std::vector<std::string>& arguments, Capture capture,
                            Clock::time_point deadline) {
  Pipe pipe;
  if (pipe.reading() < 0) return failure(errno);
  pid_t pid = -1;
  const int error = start(arguments, FileActions(capture, pipe.writing()), pid);
  if (error != 0) return failure(error);
  pipe.closeWriting();

  const auto text = readToEnd(pipe.reading(), deadline);
  const auto status = statusAtEnd(pid, text ? deadline : Clock::now());
  if (!status) end(pid);
  if (!text || !status) {
    const bool isLate = Clock::now() >= deadline;
    return {-1, "launchctl did not answer in time", isLate};
  }
  return {*status, text::isUtf8(*text) ? *text : std::string()};
}

}  // namespace platform
