#include "soak/fault_injector.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace {

struct Call {
  long number;
  const char* name;
  bool reads;  ///< may answer that there is nothing
};

constexpr Call kCalls[] = {
    {SYS_openat, "openat", false},         {SYS_read, "read", true},
    {SYS_pread64, "pread64", true},        {SYS_getdents64, "getdents64", true},
    {SYS_newfstatat, "newfstatat", false}, {SYS_readlinkat, "readlinkat", true},
    {SYS_socket, "socket", false},         {SYS_connect, "connect", false},
    {SYS_sendmsg, "sendmsg", false},       {SYS_recvmsg, "recvmsg", false},
    {SYS_ppoll, "ppoll", false},           {SYS_pidfd_open, "pidfd_open", false},
};

const Call& callOf(long number) {
  return *std::find_if(std::begin(kCalls), std::end(kCalls),
                       [number](const Call& call) { return call.number == number; });
}

sock_filter statement(unsigned code, std::size_t value) {
  return {static_cast<__u16>(code), 0, 0, static_cast<__u32>(value)};
}

/// The kernel's answer is a descriptor at which it asks what shall become of each call.
int installFilter() {
  std::vector<sock_filter> filter{statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
  for (const Call& call : kCalls) {
    // Next: ask; otherwise skip that.
    filter.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 1, static_cast<__u32>(call.number)});
    filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
  }
  filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return -1;
  return static_cast<int>(
      syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &program));
}

bool isStandardInput(const seccomp_data& data) {
  return data.nr == SYS_read && data.args[0] == STDIN_FILENO;
}

}  // namespace

FaultInjector::FaultInjector() {
  (void)!pipe2(told_, O_CLOEXEC);
  (void)!pipe2(done_, O_CLOEXEC);
}

FaultInjector::~FaultInjector() {
  ending_ = true;
  if (thread_.joinable()) thread_.join();
  for (const int fd : {listener_, told_[0], told_[1], done_[0], done_[1]}) close(fd);
}

bool FaultInjector::prepare() {
  const int listener = installFilter();
  if (write(told_[1], &listener, sizeof listener) != sizeof listener || listener < 0) return false;
  char byte = 0;
  return read(done_[0], &byte, 1) == 1;
}

bool FaultInjector::attach(pid_t program) {
  int listener = -1;
  if (read(told_[0], &listener, sizeof listener) != sizeof listener || listener < 0) return false;
  const int pidfd = static_cast<int>(syscall(SYS_pidfd_open, program, 0U));
  listener_ = static_cast<int>(syscall(SYS_pidfd_getfd, pidfd, listener, 0U));
  close(pidfd);
  if (listener_ < 0) return false;
  thread_ = std::thread([this] { stand(); });
  return write(done_[1], "", 1) == 1;
}

void FaultInjector::arm(int number, int error) {
  failed_ = -1;
  error_ = error;
  left_ = number;
}

bool FaultInjector::disarm(std::string* call) {
  left_ = 0;
  if (failed_ < 0) return false;
  if (call != nullptr) *call = callOf(failed_).name;
  return true;
}

void FaultInjector::stand() {
  while (!ending_) {
    pollfd waiting{listener_, POLLIN, 0};
    if (poll(&waiting, 1, 20) <= 0) continue;
    if ((waiting.revents & POLLIN) == 0) return;  // the program has ended
    seccomp_notif asked = {};
    if (ioctl(listener_, SECCOMP_IOCTL_NOTIF_RECV, &asked) != 0) continue;

    seccomp_notif_resp answer = {};
    answer.id = asked.id;
    answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
    const int error = error_;
    const bool canFail = error != kNothing || callOf(asked.data.nr).reads;
    if (left_ > 0 && canFail && !isStandardInput(asked.data) && --left_ == 0) {
      failed_ = asked.data.nr;
      answer.flags = 0;
      answer.error = -error;
    }
    ioctl(listener_, SECCOMP_IOCTL_NOTIF_SEND, &answer);
  }
}
