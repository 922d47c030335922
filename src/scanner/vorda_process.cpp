#include "scanner/vorda_process.h"

#include <tuple>

#include "text/hash_combine.h"

bool VordaProcess::operator==(const VordaProcess& other) const {
  const auto shown = [](const VordaProcess& process) {
    return std::tie(process.pid, process.displayName, process.product, process.memMB, process.cpu,
                    process.commandLine, process.labRole, process.matchedAgents,
                    process.isProtected, process.ownerName);
  };
  return shown(*this) == shown(other);
}

std::size_t std::hash<VordaProcess>::operator()(const VordaProcess& process) const noexcept {
  std::size_t seed = 0;
  text::hashCombine(seed, process.pid);
  text::hashCombine(seed, process.displayName);
  text::hashCombine(seed, process.product);
  text::hashCombine(seed, process.memMB);  // std::hash gives -0.0 and 0.0 one value
  text::hashCombine(seed, process.cpu);
  text::hashCombine(seed, process.commandLine);
  text::hashCombine(seed, rawValue(process.labRole));
  text::hashCombine(seed, process.matchedAgents.size());
  for (const auto& label : process.matchedAgents) text::hashCombine(seed, label);
  text::hashCombine(seed, process.isProtected);
  text::hashCombine(seed, process.ownerName);
  return seed;
}
