#include "ui/memory_warning_rule.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <map>
#include <utility>

#include "scanner/memory_units.h"

namespace {

/// A process is to blame when its family has taken at least this share of what is gone, and at
/// least so many MiB.
constexpr double kLeastShare = 0.25;
constexpr double kLeastGrownMB = 100;
/// Samples that come closer tell nothing new: the last minute then is six of them at most.
constexpr double kBetweenSamples = 9.5;
/// A look after this part of the wanted pause comes in time: timers are not exact.
constexpr double kInTime = 0.9;

/// What has one number counts together: a family, or a process that has none.
std::int32_t workOf(const VordaProcess& process) {
  return process.family.value_or(process.pid);
}

}  // namespace

void MemoryWarningRule::look(const Look& look) {
  followTrend(look);
  followStalls(look);
  availableGB_ = look.availableGB;
  trouble_.reset();
  if (stalledSince_ && look.time - *stalledSince_ >= kStalledFor) trouble_ = MemoryTrouble::stalls;
  const bool isLittle = look.availableGB < kLeastAvailable * look.totalGB;
  if (isLittle && falls_ >= kFalls) trouble_ = MemoryTrouble::runsOut;
  if (trouble_) lastTrouble_ = look.time;
}

void MemoryWarningRule::followTrend(const Look& look) {
  const bool isNew = !last_ || look.totalGB != last_->totalGB || look.time - last_->time > kSoon;
  if (isNew) {
    falls_ = 0;
    pause_ = kUsualPause;
    last_ = look;
    return;
  }
  const double passed = look.time - last_->time;
  if (passed < kInTime * pause_) return;
  const double rate = (last_->availableGB - look.availableGB) / passed;
  const double left = rate > 0 ? look.availableGB / rate : std::numeric_limits<double>::infinity();
  constexpr double kLooksInTheTimeLeft = 12;
  falls_ = left < kSoon ? falls_ + 1 : 0;
  pause_ = std::clamp(left / kLooksInTheTimeLeft, kLeastPause, kUsualPause);
  last_ = look;
}

void MemoryWarningRule::followStalls(const Look& look) {
  const bool isMuch =
      look.stalls && (look.stalls->some >= kManyStalls || look.stalls->full >= kManyFullStalls);
  // After a long gap, such as a night's sleep, an earlier look says nothing of the time between.
  const bool isNew = !stallsAskedAt_ || look.time - *stallsAskedAt_ > kSoon;
  if (!isMuch) {
    stalledSince_.reset();
  } else if (!stalledSince_ || isNew) {
    stalledSince_ = look.time;
  }
  stallsAskedAt_ = look.time;
}

bool MemoryWarningRule::isOver(double time) const {
  return !trouble_ && (!lastTrouble_ || time - *lastTrouble_ >= kOverAfter);
}

std::optional<MemoryWarningRule::Warning> MemoryWarningRule::sampled(
    double time, const std::vector<VordaProcess>& processes, bool menuIsOpen) {
  std::optional<Warning> warning;
  if (trouble_ && !menuIsOpen) {
    auto found = culprit(time, processes);
    if (mayWarn(time, found)) warning = Warning{*trouble_, std::move(found)};
  }
  remember(time, processes);
  return warning;
}

void MemoryWarningRule::remember(double time, const std::vector<VordaProcess>& processes) {
  std::vector<Held> held;  // takes the memory of a sample that is dropped
  while (!samples_.empty() && time - samples_.front().time > kSoon) {
    held = std::move(samples_.front().processes);
    samples_.erase(samples_.begin());
  }
  if (!samples_.empty() && time - samples_.back().time < kBetweenSamples) return;
  held.clear();
  held.reserve(processes.size());
  for (const VordaProcess& process : processes) {
    held.push_back({process.pid, process.identity, process.memMB});
  }
  std::ranges::sort(held, {}, &Held::pid);
  samples_.push_back({time, availableGB_, std::move(held)});
}

/// 0 for a process that was not listed, because it was small or not there.
double MemoryWarningRule::heldBefore(const Sample& sample, const VordaProcess& process) {
  const auto found = std::ranges::lower_bound(sample.processes, process.pid, {}, &Held::pid);
  const bool isThere = found != sample.processes.end() && found->pid == process.pid &&
                       found->identity == process.identity;
  return isThere ? found->memMB : 0;
}

/// The process that has grown most within the last minute, of the family that has, if that explains
/// a good part of what is gone; else the largest process.
std::optional<MemoryCulprit> MemoryWarningRule::culprit(
    double time, const std::vector<VordaProcess>& processes) const {
  if (processes.empty()) return std::nullopt;
  const auto said = [](const VordaProcess& process, double grownMB, double seconds) {
    return MemoryCulprit{
        {process.pid, process.identity}, process.displayName, process.memMB, grownMB, seconds};
  };
  const auto before = std::ranges::find_if(
      samples_, [time](const Sample& sample) { return time - sample.time <= kSoon; });
  if (before != samples_.end() && before->time < time) {
    struct Growth {
      double sumMB = 0;
      double mostMB = 0;
      const VordaProcess* most = nullptr;
    };
    std::map<std::int32_t, Growth> growths;
    for (const VordaProcess& process : processes) {
      const double grownMB = process.memMB - heldBefore(*before, process);
      Growth& growth = growths[workOf(process)];
      growth.sumMB += grownMB;
      if (growth.most != nullptr && grownMB <= growth.mostMB) continue;
      growth.mostMB = grownMB;
      growth.most = &process;
    }
    const auto& [work, growth] = *std::ranges::max_element(
        growths, {}, [](const auto& entry) { return entry.second.sumMB; });
    const double goneMB = (before->availableGB - availableGB_) * kMBPerGB;
    if (growth.sumMB >= std::max(kLeastGrownMB, kLeastShare * goneMB)) {
      return said(*growth.most, growth.mostMB, time - before->time);
    }
  }
  return said(*std::ranges::max_element(processes, {}, &VordaProcess::memMB), 0, 0);
}

/// Whether there may be a warning of this culprit now; if so it counts as given.
bool MemoryWarningRule::mayWarn(double time, const std::optional<MemoryCulprit>& culprit) {
  std::erase_if(given_, [time](const Given& given) { return time - given.time >= kHour; });
  const auto cause = culprit ? std::optional(culprit->process) : std::nullopt;
  const bool isRepeated = std::ranges::any_of(given_, [&](const Given& given) {
    return time - given.time < kSameAgain && given.culprit == cause;
  });
  if (isRepeated || given_.size() >= kMostAnHour) return false;
  given_.push_back({time, cause});
  return true;
}
