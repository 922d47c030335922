#include "scanner/lab_role.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<std::string_view, 4> kRawValues{"inference", "training", "agent", "none"};

}  // namespace

std::string_view rawValue(LabRole role) {
  return kRawValues.at(static_cast<std::size_t>(role));
}

std::optional<LabRole> labRole(std::string_view rawValue) {
  const auto* found = std::ranges::find(kRawValues, rawValue);
  if (found == kRawValues.end()) return std::nullopt;
  return static_cast<LabRole>(found - kRawValues.begin());
}
