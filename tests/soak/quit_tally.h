#pragma once

#include <atomic>
#include <cstddef>
#include <string>

#include "soak/pid_relay.h"

/// One choice of "Quit" or "Force Quit", as somebody saw it who stood beside.
struct QuitClick {
  int signal = 0;          ///< what the chosen item sends
  bool wasMade = false;    ///< false: there was nothing to click on
  bool mustReach = false;  ///< the one that is meant shall get it, if it still has the pid
  std::string where;       ///< when the pid was passed on, for people
};

/// What became of all clicks at moments of one kind.
struct QuitTally {
  std::atomic<int> clicks = 0;
  std::atomic<int> wrong = 0;      ///< clicks that signalled somebody who was not meant
  std::atomic<int> missed = 0;     ///< the one that was meant had the pid, and was not ended
  std::atomic<int> gone = 0;       ///< there was nothing to click on, as its process had ended
  std::atomic<int> inOneTick = 0;  ///< both that had the pid were started in one tick

  /// That many, in memory that this process shares with those that it forks from now on.
  static QuitTally* shared(std::size_t count);

  /// Adds a click, once all is done that it comes to.
  void add(const QuitClick& click, const PidRelay& relay);

  /// Prints it, and expects that none was wrong or missed.
  void report(const char* name) const;
};
