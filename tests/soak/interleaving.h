#pragma once

#include <sys/types.h>

#include <mutex>
#include <string>

#include "soak/call_gate.h"
#include "soak/call_subject.h"
#include "soak/pid_relay.h"

/// Passes a pid on at an exact place of what a program does: right before one of the calls in
/// which it asks the kernel about that pid.
class Interleaving {
 public:
  /// What a kernel refuses to tell of a process: minus an error number, or none.
  using Refusal = CallGate::Answer (*)(const CallGate::Call&, const CallSubject&);

  /// `killIsAPlace`: what happens right before a kill(2), too late for every check, counts.
  Interleaving(PidRelay& relay, Refusal refusal, bool killIsAPlace);

  /// Where the program's calls wait. It is attached to by whoever starts the program.
  CallGate& gate() { return gate_; }
  /// Whose calls count: the program's first thread.
  void watch(pid_t program);

  /// Before which of the calls from now on it happens, the first being 1; 0: at once.
  struct Place {
    int end = 0;        ///< the process that is meant ends
    int successor = 0;  ///< its successor is started: not before that
  };
  void arm(Place place);

  struct Reached {
    bool end = false;
    bool successor = false;
    std::string where;  ///< the calls before which it happened
  };
  /// What of it has happened. Nothing happens any more.
  Reached disarm();

  /// How many calls were refused so far.
  int refused();

 private:
  CallGate::Answer answerTo(const CallGate::Call& call);
  void passOn(const std::string& where);

  PidRelay& relay_;
  Refusal refusal_;
  bool killIsAPlace_;
  std::mutex mutex_;  ///< of all below
  pid_t program_ = 0;
  bool isArmed_ = false;
  Place place_;
  int calls_ = 0;
  Reached reached_;
  int refused_ = 0;
  CallGate gate_;  ///< last, so that it goes before what it needs
};
