#include "soak/fault_injector.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

/// Those that may answer that there is nothing, and the others.
constexpr long kReadingCalls[] = {SYS_read, SYS_pread64, SYS_getdents64, SYS_readlinkat};
constexpr long kOtherCalls[] = {SYS_openat,  SYS_newfstatat, SYS_socket, SYS_connect,
                                SYS_sendmsg, SYS_recvmsg,    SYS_ppoll,  SYS_pidfd_open};

std::vector<long> allCalls() {
  std::vector<long> calls(std::begin(kReadingCalls), std::end(kReadingCalls));
  calls.insert(calls.end(), std::begin(kOtherCalls), std::end(kOtherCalls));
  return calls;
}

bool reads(const CallGate::Call& call) {
  return std::find(std::begin(kReadingCalls), std::end(kReadingCalls), call.number) !=
         std::end(kReadingCalls);
}

bool isOfStandardInput(const CallGate::Call& call) {
  return call.number == SYS_read && call.arguments[0] == STDIN_FILENO;
}

}  // namespace

FaultInjector::FaultInjector()
    : gate_(allCalls(), [this](const CallGate::Call& call) { return answerTo(call); }) {}

void FaultInjector::arm(int number, int error) {
  failed_ = -1;
  error_ = error;
  left_ = number;
}

bool FaultInjector::disarm(std::string* call) {
  left_ = 0;
  if (failed_ < 0) return false;
  if (call != nullptr) *call = nameOfCall(failed_);
  return true;
}

CallGate::Answer FaultInjector::answerTo(const CallGate::Call& call) {
  const int error = error_;
  const bool canFail = error != kNothing || reads(call);
  if (left_ <= 0 || !canFail || isOfStandardInput(call) || --left_ != 0) return std::nullopt;
  failed_ = call.number;
  return -error;
}
