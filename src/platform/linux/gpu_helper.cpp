#include "platform/linux/gpu_helper.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include "platform/linux/process_identity.h"
#include "platform/processes.h"

namespace platform {
namespace {

/// Starts the program in a session of its own, with one end of a socket as its standard input and
/// output and no other file; 0 when it can't be started.
pid_t spawn(const std::string& program, const std::string& library, int socket) {
  posix_spawn_file_actions_t actions{};
  posix_spawnattr_t attributes{};
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, socket, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, socket, STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_RDWR, 0);
  posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
  posix_spawn_file_actions_addchdir_np(&actions, "/");
  sigset_t none;
  sigset_t all;
  sigemptyset(&none);
  sigfillset(&all);
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setflags(&attributes,
                           POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

  std::string name = "vorda-gpu";
  std::string argument = library;
  const std::array<char*, 3> arguments{name.data(), argument.data(), nullptr};
  pid_t pid = 0;
  const int error =
      posix_spawn(&pid, program.c_str(), &actions, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? pid : 0;
}

}  // namespace

bool GpuHelper::start(const std::string& library) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) != 0) {
    return false;
  }
  FileDescriptor ours(ends[0]);
  const FileDescriptor theirs(ends[1]);
  fcntl(theirs.get(), F_SETFL, 0);  // it may wait for questions
  const pid_t pid = spawn(options_.program, library, theirs.get());
  if (pid == 0) return false;
  children_.push_back(pid);
  pidfd_ = FileDescriptor(openPidfd(pid));
  socket_ = std::move(ours);
  return true;
}

void GpuHelper::ask(const std::string& library, bool once) {
  reap();
  const auto now = Clock::now();
  if (isAsked() || now < restsUntil_ || library.empty()) return;
  if (!socket_.isOpen() && !start(library)) return giveUp();

  received_.clear();
  askedAt_ = processClock();
  deadline_ = now + options_.patience;
  const std::string_view question = once ? kAskOnce : kAskAndStay;
  if (send(socket_.get(), question.data(), question.size(), MSG_NOSIGNAL | MSG_DONTWAIT) !=
      static_cast<ssize_t>(question.size())) {
    giveUp();
  }
}

/// False when nothing more will come.
bool GpuHelper::receive() {
  std::array<char, 16 << 10> bytes = {};
  for (;;) {
    const ssize_t count = recv(socket_.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count > 0) {
      received_.append(bytes.data(), static_cast<std::size_t>(count));
      if (received_.size() > kLongestGpuAnswer) return false;
    } else if (count == 0 || errno != EINTR) {
      return count < 0 && errno == EAGAIN;
    }
  }
}

std::optional<GpuHelper::Heard> GpuHelper::hear() {
  reap();
  if (!isAsked()) return std::nullopt;
  const bool isThere = receive();
  const bool isWhole = received_ == kLastLine || received_.ends_with("\n" + std::string(kLastLine));
  if (!isWhole) {
    if (!isThere || Clock::now() >= *deadline_) giveUp();
    return std::nullopt;
  }
  auto answer = parseGpuAnswer(received_);
  deadline_.reset();
  if (!answer || answer->error || !isThere) giveUp();
  if (!answer) return std::nullopt;
  return Heard{std::move(*answer), askedAt_};
}

void GpuHelper::await() const {
  while (isAsked()) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline_ - Clock::now());
    pollfd wanted{.fd = socket_.get(), .events = POLLIN, .revents = 0};
    const int ready = poll(&wanted, 1, std::max(0, static_cast<int>(left.count())));
    if (ready >= 0 || errno != EINTR) return;
  }
}

void GpuHelper::giveUp() {
  end();
  restsUntil_ = Clock::now() + options_.rest;
}

void GpuHelper::end() {
  deadline_.reset();
  received_.clear();
  socket_ = FileDescriptor();  // it ends by itself when it reads on
  // One that has ended already needs no signal.
  if (pidfd_.isOpen()) static_cast<void>(sendSignal(pidfd_.get(), SIGKILL));
  pidfd_ = FileDescriptor();
  reap();
}

/// One that hangs in the kernel can't be reaped yet, and is not waited for.
void GpuHelper::reap() {
  std::erase_if(children_, [](pid_t pid) {
    int status = 0;
    const pid_t reaped = waitpid(pid, &status, WNOHANG);
    return reaped == pid || (reaped < 0 && errno == ECHILD);
  });
}

}  // namespace platform
