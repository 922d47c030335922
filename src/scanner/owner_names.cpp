#include "scanner/owner_names.h"

#include <algorithm>

#include "platform/users.h"

namespace ProcessScanner {

void OwnerNames::beginScan() {
  constexpr int kScansInAMinute = 12;
  if (++scans_ < kScansInAMinute) return;
  scans_ = 0;
  names_.clear();
}

const std::string& OwnerNames::of(std::uint32_t uid) {
  const auto owner = std::ranges::find(names_, uid, [](const auto& one) { return one.first; });
  if (owner != names_.end()) return owner->second;
  return names_.emplace_back(uid, platform::nameOfUser(uid)).second;
}

}  // namespace ProcessScanner
