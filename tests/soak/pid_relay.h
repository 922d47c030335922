#pragma once

#include <sys/types.h>

#include <memory>
#include <string>

#include "soak/idle_process.h"

/// One pid, and the two model servers that have it one after the other: the one that somebody
/// means to quit, and its successor, whom nobody chose. For a pid namespace of the test's own.
class PidRelay {
 public:
  /// What a row says of them.
  struct Names {
    pid_t pid = 0;
    std::string meant;
    std::string successor;
  };

  /// Why no pid can be chosen here; "" when one can.
  static std::string reason();

  /// `meantRemembers`: the one that is meant shall not end by a SIGTERM, but remember it.
  explicit PidRelay(bool meantRemembers) : meantRemembers_(meantRemembers) {}

  /// Ends both, and starts another one to be meant. `atTickBegin`: as soon as the clock by which
  /// the kernel notes starts has gone on.
  void begin(bool atTickBegin);
  /// Ends the one that is meant: nobody has the pid then.
  void endMeant();
  /// Gives its pid to its successor.
  void startSuccessor();

  const Names& names() const { return names_; }
  const IdleProcess* meant() const { return meant_.get(); }          ///< null once it was ended
  const IdleProcess* successor() const { return successor_.get(); }  ///< null before it was started
  /// Whether both were started at one time, as the kernel counts.
  bool sharedATick() const { return successor_ && successor_->startTick() == meantStart_; }

 private:
  bool meantRemembers_;
  int round_ = 0;
  Names names_;
  unsigned long long meantStart_ = 0;
  std::unique_ptr<IdleProcess> meant_;
  std::unique_ptr<IdleProcess> successor_;
};
