#pragma once

#include <sys/types.h>

#include <atomic>
#include <string>

#include "soak/call_gate.h"

/// Lets one of a program's system calls fail: those that open, read and list, and those that talk
/// to a bus. Reading standard input is let alone.
class FaultInjector {
 public:
  FaultInjector();

  /// What the program does before it starts. False where the kernel can't do this.
  bool prepare() { return gate_.prepare(); }
  /// From now on calls of `program`, which has prepared itself, can fail.
  bool attach(pid_t program) { return gate_.attach(program); }

  /// An error number, or: a read that reads nothing.
  static constexpr int kNothing = 0;

  /// Lets the `number`th call from now on (the first is 1) fail so.
  void arm(int number, int error);
  /// Whether there was such a call; if so, which it was. Nothing fails any more.
  bool disarm(std::string* call = nullptr);

 private:
  CallGate::Answer answerTo(const CallGate::Call& call);

  std::atomic<int> left_ = 0;
  std::atomic<int> error_ = 0;
  std::atomic<long> failed_ = -1;  ///< the call that failed
  CallGate gate_;                  ///< last, so that it goes before what it needs
};
