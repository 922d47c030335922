#include "scanner/process_sampling.h"

#include "platform/users.h"

namespace ProcessScanner {

bool ProcessSampler::sample(std::int32_t pid) {
  pid_ = pid;
  return platform::readProcess(pid, facts_);
}

double ProcessSampler::physicalFootprintMB() const {
  constexpr double kBytesPerMB = 1048576;
  return static_cast<double>(platform::physicalFootprint(pid_).value_or(0)) / kBytesPerMB;
}

const std::string& ProcessSampler::ownerName() {
  const auto [owner, isNew] = ownerNames_.try_emplace(uid());
  if (isNew) owner->second = platform::nameOfUser(uid());
  return owner->second;
}

}  // namespace ProcessScanner
