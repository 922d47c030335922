#include "agents/vorda_launch_agent.h"

#include "text/hash_combine.h"

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
