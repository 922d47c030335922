#include "agents/vorda_launch_agent.h"

#include <tuple>

#include "text/hash_combine.h"

bool VordaLaunchAgent::runsAs(std::int32_t process, std::optional<std::uint64_t> startTime) const {
  return pid == process && startTime && *startTime <= pidAskedAt;
}

bool VordaLaunchAgent::operator==(const VordaLaunchAgent& other) const {
  const auto shown = [](const VordaLaunchAgent& agent) {
    return std::tie(agent.label, agent.plistPath, agent.program, agent.keepAlive, agent.loaded,
                    agent.pid);
  };
  return shown(*this) == shown(other);
}

std::size_t std::hash<VordaLaunchAgent>::operator()(const VordaLaunchAgent& agent) const noexcept {
  std::size_t seed = 0;
  text::hashCombine(seed, agent.label);
  text::hashCombine(seed, agent.plistPath);
  text::hashCombine(seed, agent.program);
  text::hashCombine(seed, agent.keepAlive);
  text::hashCombine(seed, agent.loaded);
  text::hashCombine(seed, agent.pid);
  return seed;
}
