#include "scanner/process_sampling.h"

#include <algorithm>

#include "platform/users.h"

namespace ProcessScanner {

void ProcessSampler::beginScan() {
  constexpr int kScansInAMinute = 12;
  if (++scansWithNames_ < kScansInAMinute) return;
  scansWithNames_ = 0;
  ownerNames_.clear();
}

bool ProcessSampler::look(std::int32_t pid) {
  pid_ = pid;
  return platform::lookAtProcess(pid, facts_);
}

double ProcessSampler::physicalFootprintMB() const {
  constexpr double kBytesPerMB = 1048576;
  return static_cast<double>(platform::physicalFootprint(pid_).value_or(0)) / kBytesPerMB;
}

const std::string& ProcessSampler::ownerName() {
  const auto owner =
      std::ranges::find(ownerNames_, uid(), [](const auto& one) { return one.first; });
  if (owner != ownerNames_.end()) return owner->second;
  return ownerNames_.emplace_back(uid(), platform::nameOfUser(uid())).second;
}

}  // namespace ProcessScanner
