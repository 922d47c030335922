#include "platform/processes.h"

namespace platform {

std::vector<std::int32_t> allPids() {
  return {};
}

bool readProcess(std::int32_t, ProcessFacts&) {
  return false;
}

std::optional<std::uint64_t> physicalFootprint(std::int32_t) {
  return std::nullopt;
}

std::optional<std::uint64_t> startIdentity(std::int32_t) {
  return std::nullopt;
}

std::int32_t ownPid() {
  return 0;  // no process of anybody's
}

}  // namespace platform
