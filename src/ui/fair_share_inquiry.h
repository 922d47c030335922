#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/mapped_memory.h"
#include "ui/front_end.h"
#include "ui/menu.h"

/// Finds out how much memory processes really hold (platform::askFairShares), and tells when that
/// is known. It never waits. The last question alone counts.
class FairShareInquiry {
 public:
  /// In MiB, in the order in which they were asked for; none for what can't be told, and for a
  /// process that has ended since.
  using Shares = std::vector<std::optional<double>>;
  using Tell = std::function<void(const Shares& shares)>;

  /// `frontEnd` outlives it.
  explicit FairShareInquiry(FrontEnd& frontEnd) : frontEnd_(frontEnd) {}
  ~FairShareInquiry() { forget(); }
  FairShareInquiry(const FairShareInquiry&) = delete;
  FairShareInquiry& operator=(const FairShareInquiry&) = delete;

  /// Calls `tell` once, later, unless nothing can be told at all.
  void ask(std::vector<ProcessReference> processes, Tell tell);

  /// Drops the question: `tell` will not be called.
  void forget();

 private:
  void lookIn(double seconds);
  void look(double waited);

  FrontEnd& frontEnd_;
  std::vector<ProcessReference> processes_;
  Tell tell_;
  std::shared_ptr<const platform::FairShareQuestion> question_;
  std::shared_ptr<ScheduledWork> nextLook_;
};
