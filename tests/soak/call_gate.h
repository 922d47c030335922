#pragma once

#include <sys/types.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

/// Stands between a program and the kernel: its system calls of some kinds wait until it has been
/// decided what becomes of them.
class CallGate {
 public:
  struct Call {
    long number = 0;   ///< SYS_openat and so on
    pid_t thread = 0;  ///< who makes it
    std::array<std::uint64_t, 6> arguments{};
  };
  /// What a call gives that the kernel never sees: a result, or minus an error number. None: the
  /// kernel does it.
  using Answer = std::optional<std::int64_t>;
  /// Runs in a thread of its own while the call waits.
  using Keeper = std::function<Answer(const Call&)>;

  /// Whether this kernel hands calls out.
  static bool isPossible();

  /// `calls`: the numbers of those that wait.
  CallGate(std::vector<long> calls, Keeper keeper);
  ~CallGate();
  CallGate(const CallGate&) = delete;
  CallGate& operator=(const CallGate&) = delete;

  /// To be called by the program before it starts; it goes on when there is a keeper. What it
  /// starts meanwhile has the same keeper. False where the kernel can't do this.
  bool prepare();
  /// Gives the program, which prepares itself, its keeper. `program` may be this process: then it
  /// is one of its threads that does.
  bool attach(pid_t program);

 private:
  struct Handshake;

  void keep();

  std::vector<long> calls_;
  Keeper keeper_;
  Handshake* handshake_;  ///< shared with the program
  int listener_ = -1;
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};

/// The name of a call that some test lets wait; its number where that has none here.
std::string nameOfCall(long number);
