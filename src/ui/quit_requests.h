#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ui/menu.h"

/// The processes that were asked to quit and are still there.
class QuitRequests {
 public:
  static constexpr double kPatience = 3;  ///< seconds that a process has before anything is said

  /// This process was asked to quit just now; `name` is what its row called it. False when it is
  /// not there any more. An earlier request to it counts no more.
  bool add(const ProcessReference& process, const std::string& name);

  /// The request that this process was sent last is kPatience old.
  void runOut(const ProcessReference& process, std::uint64_t askedAt);

  /// It was not asked, but forced.
  void forget(const ProcessReference& process);

  /// Forgets those that have ended meanwhile.
  void update();

  /// When it was asked, on platform::processClock(); 0 when it was not.
  std::uint64_t askedAt(const ProcessReference& process) const;

  /// What to say at once of those that had their time, the latest first: lines joined by "\n",
  /// three at most, each for a minute; "" for nothing.
  std::string notice() const;

  /// What the process's submenu says of it, line by line.
  std::vector<std::string> linesOf(const ProcessReference& process) const;

 private:
  struct Request {
    ProcessReference process;
    std::string name;
    std::uint64_t askedAt = 0;
    bool isOver = false;  ///< its time
    bool isStopped = false;
  };
  const Request* find(const ProcessReference& process) const;

  std::vector<Request> requests_;  ///< the latest last
};
