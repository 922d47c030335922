#include "launch_agents/launch_agent_scanner.h"
#include "platform/processes.h"
#include "platform/users.h"
#include "scanner/command_line.h"
#include "scanner/credentials/credential_mask.h"
#include "scanner/process_order.h"
#include "scanner/process_sampling.h"
#include "scanner/process_scanner.h"
#include "scanner/process_tree.h"
#include "scanner/rules.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

/// The kernel and what runs the session: never shown.
bool isExcluded(std::string_view name) {
  return name == "kernel_task" || name == "launchd" || name == "WindowServer";
}

/// Longer than any name or detail needs, and short enough to be kept for thousands of processes.
constexpr std::size_t kLongestStoredLine = 8 << 10;

std::string stored(std::string_view commandLine) {
  return std::string(text::withinBytes(commandLine, kLongestStoredLine));
}

std::vector<std::string> labelsOf(std::span<const VordaLaunchAgent> launchAgents, std::int32_t pid,
                                  std::optional<std::uint64_t> startTime) {
  std::vector<std::string> labels;
  for (const auto& launchAgent : launchAgents) {
    if (launchAgent.runsAs(pid, startTime)) labels.push_back(launchAgent.label);
  }
  return labels;
}

}  // namespace

std::vector<VordaProcess> scan(double minMemMB) {
  return scan(minMemMB, LaunchAgentScanner::scan());
}

std::vector<VordaProcess> scan(double minMemMB, std::span<const VordaLaunchAgent> launchAgents) {
  const std::uint32_t ownUid = platform::ownUid();
  const std::int32_t ownPid = platform::ownPid();

  std::vector<VordaProcess> processes;
  ProcessTree tree;
  ProcessSampler sampler;
  CommandLine line;
  std::string exe;
  for (const std::int32_t pid : platform::allPids()) {
    if (pid < 1 || !sampler.sample(pid)) continue;
    tree.add(pid, sampler.parent());
    if (pid == ownPid || isExcluded(sampler.name())) continue;
    const bool isProtected = sampler.uid() != ownUid;

    line.read(sampler.arguments(), sampler.commandLine());
    exe.clear();
    text::appendLowered(text::lastPathComponent(sampler.name()), exe);
    const LabRole role = roleOf(exe, line);
    if (isProtected && role == LabRole::none) continue;
    const double memMB = sampler.physicalFootprintMB();
    if (memMB < minMemMB && role == LabRole::none) continue;
    if (!sampler.confirm()) continue;

    auto shown = CredentialMask::shown(sampler.arguments(), sampler.commandLine());
    FriendlyName name = shown.arguments
                            ? friendlyName(*shown.arguments, role, {})
                            : nameOf(line, role, CredentialMask::maskedLine(sampler.name()));
    processes.push_back(
        {.pid = pid,
         .displayName = std::move(name.displayName),
         .product = std::move(name.product),
         .memMB = memMB,
         .cpu = 0,
         .commandLine = stored(shown.commandLine),
         .labRole = role,
         .matchedAgents = labelsOf(launchAgents, pid, sampler.startTime()),
         .isProtected = isProtected,
         .ownerName = sampler.ownerName(),
         .identity = sampler.identity(),
         .isCommandLineCut = sampler.isCut() || shown.commandLine.size() > kLongestStoredLine});
  }

  tree.countAll();
  for (VordaProcess& process : processes) process.processesBelow = tree.below(process.pid);
  sortByRoleAndMemory(processes);
  return processes;
}

}  // namespace ProcessScanner
