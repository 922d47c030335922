#include "soak/interleaving.h"

#include <sys/syscall.h>

namespace {

/// Those in which a program can ask about a process, or act upon it.
const std::vector<long> kCalls{
    SYS_openat,     SYS_read,    SYS_pread64,    SYS_getdents64,        SYS_newfstatat, SYS_statx,
    SYS_readlinkat, SYS_fstatfs, SYS_pidfd_open, SYS_pidfd_send_signal, SYS_kill};

}  // namespace

Interleaving::Interleaving(PidRelay& relay, Refusal refusal, bool killIsAPlace)
    : relay_(relay),
      refusal_(refusal),
      killIsAPlace_(killIsAPlace),
      gate_(kCalls, [this](const CallGate::Call& call) { return answerTo(call); }) {}

void Interleaving::watch(pid_t program) {
  const std::lock_guard lock(mutex_);
  program_ = program;
}

void Interleaving::arm(Place place) {
  const std::lock_guard lock(mutex_);
  isArmed_ = true;
  place_ = place;
  calls_ = 0;
  reached_ = {};
  passOn("at once");
}

Interleaving::Reached Interleaving::disarm() {
  const std::lock_guard lock(mutex_);
  isArmed_ = false;
  return reached_;
}

int Interleaving::refused() {
  const std::lock_guard lock(mutex_);
  return refused_;
}

CallGate::Answer Interleaving::answerTo(const CallGate::Call& call) {
  const CallSubject subject = subjectOf(call);
  const std::lock_guard lock(mutex_);
  const bool isPlace = call.number != SYS_kill || killIsAPlace_;
  if (isArmed_ && isPlace && call.thread == program_ && subject.pid == relay_.names().pid) {
    ++calls_;
    passOn("before call " + std::to_string(calls_) + ", " + described(call, subject));
  }
  const CallGate::Answer refused = refusal_(call, subject);
  if (refused) ++refused_;
  return refused;
}

void Interleaving::passOn(const std::string& where) {
  if (calls_ == place_.end) {
    relay_.endMeant();
    reached_.end = true;
    reached_.where = "ended " + where;
  }
  if (calls_ == place_.successor && reached_.end) {
    relay_.startSuccessor();
    reached_.successor = true;
    reached_.where += ", given anew " + where;
  }
}
