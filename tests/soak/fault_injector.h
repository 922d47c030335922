#pragma once

#include <sys/types.h>

#include <atomic>
#include <string>
#include <thread>

/// Stands between a program and the kernel, and lets one of its system calls fail: those that
/// open, read and list, and those that talk to a bus. Reading standard input is let alone.
class FaultInjector {
 public:
  FaultInjector();
  ~FaultInjector();
  FaultInjector(const FaultInjector&) = delete;
  FaultInjector& operator=(const FaultInjector&) = delete;

  /// What the program does before it starts. False where the kernel can't do this.
  bool prepare();
  /// From now on `program`, which has prepared itself, is stood in front of.
  bool attach(pid_t program);

  /// An error number, or: a read that reads nothing.
  static constexpr int kNothing = 0;

  /// Lets the `number`th call from now on (the first is 1) fail so.
  void arm(int number, int error);
  /// Whether there was such a call; if so, which it was. Nothing fails any more.
  bool disarm(std::string* call = nullptr);

 private:
  void stand();

  int listener_ = -1;
  int told_[2] = {-1, -1};  ///< the program's number for the listener
  int done_[2] = {-1, -1};  ///< that the program may go on
  std::atomic<int> left_ = 0;
  std::atomic<int> error_ = 0;
  std::atomic<long> failed_ = -1;  ///< the call that failed
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};
