#include "launch_agents/vorda_launch_agent.h"

#include <tuple>

#include "text/hash_combine.h"

bool VordaLaunchAgent::runsAs(std::int32_t process, std::optional<std::uint64_t> startTime) const {
  return pid == process && startTime && *startTime <= pidAskedAt;
}

bool VordaLaunchAgent::operator==(const VordaLaunchAgent& other) const {
  const auto shown = [](const VordaLaunchAgent& launchAgent) {
    return std::tie(launchAgent.label, launchAgent.plistPath, launchAgent.program,
                    launchAgent.keepAlive, launchAgent.loaded, launchAgent.pid);
  };
  return shown(*this) == shown(other);
}

std::size_t std::hash<VordaLaunchAgent>::operator()(
    const VordaLaunchAgent& launchAgent) const noexcept {
  std::size_t seed = 0;
  text::hashCombine(seed, launchAgent.label);
  text::hashCombine(seed, launchAgent.plistPath);
  text::hashCombine(seed, launchAgent.program);
  text::hashCombine(seed, launchAgent.keepAlive);
  text::hashCombine(seed, launchAgent.loaded);
  text::hashCombine(seed, launchAgent.pid);
  return seed;
}
