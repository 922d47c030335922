#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ui/menu.h"

/// The processes that were asked to quit and are still there.
class UnfinishedQuits {
 public:
  /// Notes that this process was just asked to quit; `name` is its name in the menu. False when it
  /// is already gone. Replaces an earlier request to the same process.
  bool add(const ProcessReference& process, const std::string& name);

  /// Notes that the last request to this process, sent at `askedAt`, has had its time
  /// (WaitingTimes::kQuitPatience).
  void runOut(const ProcessReference& process, std::uint64_t askedAt);

  /// Forgets the request, because the process was force-quit.
  void forget(const ProcessReference& process);

  /// Forgets the processes that have ended.
  void update();

  /// Whether there are none: then the menu says nothing that depends on the time.
  bool isEmpty() const { return requests_.empty(); }

  /// When it was asked, on platform::processClock(); 0 when it was not.
  std::uint64_t askedAt(const ProcessReference& process) const;

  /// The text to show about processes that are still there after that time: lines joined by "\n",
  /// the latest first, at most three, each for a minute; "" for none.
  std::string notice() const;

  /// The lines about the request in the process's submenu.
  std::vector<std::string> linesOf(const ProcessReference& process) const;

 private:
  struct Request {
    ProcessReference process;
    std::string name;
    std::uint64_t askedAt = 0;
    bool isOver = false;  ///< its patience has run out
    bool isStopped = false;
  };
  const Request* find(const ProcessReference& process) const;

  std::vector<Request> requests_;  ///< the latest last
};
