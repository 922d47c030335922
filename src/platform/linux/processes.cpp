#include "platform/processes.h"

#include <unistd.h>

#include "platform/linux/process_reader.h"

namespace platform {

std::vector<std::int32_t> allPids() {
  return processReader().pids();
}

bool readProcess(std::int32_t pid, ProcessFacts& facts) {
  return processReader().read(pid, facts);
}

std::optional<std::uint64_t> physicalFootprint(std::int32_t pid) {
  return processReader().footprint(pid);
}

std::optional<std::uint64_t> startIdentity(std::int32_t pid) {
  return processReader().startIdentity(pid);
}

std::int32_t ownPid() {
  return getpid();
}

}  // namespace platform
