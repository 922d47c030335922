#pragma once

#include <cstdint>

#include "platform/processes.h"

/// Looks at a process and reads what it runs. False when there is nothing to show.
[[nodiscard]] inline bool readProcess(std::int32_t pid, platform::ProcessFacts& facts) {
  return platform::lookAtProcess(pid, facts) && platform::readCommandLine(facts);
}
