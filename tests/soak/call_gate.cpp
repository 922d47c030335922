#include "soak/call_gate.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <iterator>
#include <new>
#include <utility>

#include "tools/eventually.h"

namespace {

constexpr int kNotYet = -1;
constexpr int kImpossible = -2;

sock_filter statement(unsigned code, std::size_t value) {
  return {static_cast<__u16>(code), 0, 0, static_cast<__u32>(value)};
}

/// The kernel's answer is a descriptor at which it asks what shall become of each call.
int installFilter(const std::vector<long>& calls) {
  std::vector<sock_filter> filter{statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
  for (const long call : calls) {
    // Next: ask; otherwise skip that.
    filter.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 1, static_cast<__u32>(call)});
    filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
  }
  filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return kImpossible;
  const auto listener = static_cast<int>(
      syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &program));
  return listener < 0 ? kImpossible : listener;
}

constexpr std::chrono::milliseconds kPause{1};

}  // namespace

/// In memory that a program shares with the test that forked it, whatever files it closes.
struct CallGate::Handshake {
  std::atomic<int> listener = kNotYet;  ///< the program's number for it
  std::atomic<bool> isKept = false;
};

bool CallGate::isPossible() {
  CallGate gate({SYS_getcpu}, [](const Call&) { return std::nullopt; });
  bool isPrepared = false;
  std::thread program([&] { isPrepared = gate.prepare(); });
  const bool isAttached = gate.attach(getpid());
  program.join();
  return isPrepared && isAttached;
}

CallGate::CallGate(std::vector<long> calls, Keeper keeper)
    : calls_(std::move(calls)), keeper_(std::move(keeper)) {
  void* shared =
      mmap(nullptr, sizeof(Handshake), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  handshake_ = shared == MAP_FAILED ? nullptr : new (shared) Handshake;
}

CallGate::~CallGate() {
  ending_ = true;
  if (thread_.joinable()) thread_.join();
  close(listener_);
  if (handshake_ != nullptr) munmap(handshake_, sizeof(Handshake));
}

bool CallGate::prepare() {
  if (handshake_ == nullptr) return false;
  const int listener = installFilter(calls_);
  handshake_->listener = listener;
  if (listener < 0 || !eventually([this] { return handshake_->isKept.load(); }, kPause))
    return false;
  close(listener);
  return true;
}

bool CallGate::attach(pid_t program) {
  if (handshake_ == nullptr) return false;
  if (!eventually([this] { return handshake_->listener != kNotYet; }, kPause)) return false;
  if (handshake_->listener == kImpossible) return false;
  const int pidfd = static_cast<int>(syscall(SYS_pidfd_open, program, 0U));
  listener_ = static_cast<int>(syscall(SYS_pidfd_getfd, pidfd, handshake_->listener.load(), 0U));
  close(pidfd);
  if (listener_ < 0) return false;
  thread_ = std::thread([this] { keep(); });
  handshake_->isKept = true;
  return true;
}

void CallGate::keep() {
  while (!ending_) {
    pollfd waiting{listener_, POLLIN, 0};
    if (poll(&waiting, 1, 20) <= 0) continue;
    if ((waiting.revents & POLLIN) == 0) return;  // the program has ended
    seccomp_notif asked = {};
    if (ioctl(listener_, SECCOMP_IOCTL_NOTIF_RECV, &asked) != 0) continue;

    Call call{.number = asked.data.nr, .thread = static_cast<pid_t>(asked.pid)};
    std::copy_n(std::begin(asked.data.args), call.arguments.size(), call.arguments.begin());
    const Answer given = keeper_(call);
    seccomp_notif_resp answer = {};
    answer.id = asked.id;
    if (!given) answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
    if (given && *given >= 0) answer.val = *given;
    if (given && *given < 0) answer.error = static_cast<int>(*given);
    ioctl(listener_, SECCOMP_IOCTL_NOTIF_SEND, &answer);
  }
}

std::string nameOfCall(long number) {
  static constexpr std::pair<long, const char*> kNames[] = {
      {SYS_openat, "openat"},         {SYS_read, "read"},
      {SYS_pread64, "pread64"},       {SYS_getdents64, "getdents64"},
      {SYS_newfstatat, "newfstatat"}, {SYS_statx, "statx"},
      {SYS_fstatfs, "fstatfs"},       {SYS_readlinkat, "readlinkat"},
      {SYS_socket, "socket"},         {SYS_connect, "connect"},
      {SYS_sendmsg, "sendmsg"},       {SYS_recvmsg, "recvmsg"},
      {SYS_ppoll, "ppoll"},           {SYS_kill, "kill"},
      {SYS_pidfd_open, "pidfd_open"}, {SYS_pidfd_send_signal, "pidfd_send_signal"},
  };
  const auto* const known =
      std::find_if(std::begin(kNames), std::end(kNames),
                   [number](const auto& name) { return name.first == number; });
  return known == std::end(kNames) ? std::to_string(number) : known->second;
}
