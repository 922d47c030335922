#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "ui/front_end.h"

namespace terminal {

/// Work that waits for its time, in seconds on the caller's clock.
class WorkQueue {
 public:
  /// Runs `work` at `due`, and then every `interval` seconds; 0: once.
  std::shared_ptr<ScheduledWork> add(double due, double interval, std::function<void()> work);

  /// When the next piece of work is due.
  std::optional<double> nextDue() const;

  /// Runs what is due at `now`, in the order of its time. Repeated work that is late runs
  /// once and then goes on from now.
  void run(double now);

 private:
  struct Work;
  std::vector<std::shared_ptr<Work>> work_;
};

}  // namespace terminal
