#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "launch_agents/launch_agent_operation.h"
#include "launch_agents/vorda_launch_agent.h"
#include "scanner/gpu_sample.h"
#include "scanner/system_memory.h"
#include "scanner/vorda_process.h"
#include "ui/family_rows.h"
#include "ui/menu.h"
#include "ui/menu_arrangement.h"
#include "ui/strip_segments.h"
#include "ui/unfinished_quits.h"

/// What the menu is built from.
struct MenuContent {
  const std::vector<VordaProcess>& processes;         ///< in the scan's order
  const std::vector<VordaLaunchAgent>& launchAgents;  ///< those of interest
  SystemMemory::Snapshot sys;                         ///< the whole machine's memory
  const UnfinishedQuits* quits = nullptr;             ///< the requests to quit, if there are any
  /// What launch agents are being asked to do; those that have ended count no more.
  std::span<const LaunchAgentOperation> launchAgentOperations = {};
  const GpuSample* gpus = nullptr;  ///< what graphics cards hold, where there are any
  /// Members of families that are not in `processes`.
  const std::vector<VordaProcess>& unlistedMembers = kNoProcesses;
  /// How the menu is arranged; nullptr: as MenuArrangement is by default.
  const MenuArrangement* arrangement = nullptr;

  static const std::vector<VordaProcess> kNoProcesses;
};

/// Builds the menu from what was sampled, and from nothing else.
namespace MenuConstruction {

/// Every item of the root menu; the first is the strip's.
Menu build(const MenuContent& content);

/// A process's row and its submenu (process_row.cpp). The lines of `asked` are shown above "Quit".
/// `family`: what stands there about its family, if it has one.
MenuItem processItem(const VordaProcess& process, const std::vector<std::string>& asked = {},
                     const FamilyEntries* family = nullptr);

/// The title of that row (process_row.cpp).
std::string processTitle(const VordaProcess& process);

/// What is told and offered in a process's submenu (process_submenu.cpp); none of the entries
/// refers to its process yet.
std::vector<MenuItem> processSubmenu(const VordaProcess& process,
                                     const std::vector<std::string>& asked,
                                     const FamilyEntries* family);

/// A launch agent's row and its submenu. `underWay`: what it is being asked to do, and so can't
/// be asked for again.
MenuItem launchAgentItem(const VordaLaunchAgent& launchAgent,
                         std::optional<LaunchAgentOperation::Kind> underWay = std::nullopt);

}  // namespace MenuConstruction
