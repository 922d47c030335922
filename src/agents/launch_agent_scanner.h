#pragma once

#include <string>
#include <utility>
#include <vector>

#include "agents/vorda_launch_agent.h"

/// Lists, stops and starts the jobs of the user's service manager.
namespace LaunchAgentScanner {

/// Every job file of the user's folder and the machine's, with its state. Those that look
/// like AI tooling come first; then by label, in byte order; equals as found.
/// Synchronous; never fails (no manager: nothing is loaded).
std::vector<VordaLaunchAgent> scan();

/// Whether label or program hold one of the words that AI tooling goes by, in any case.
bool isInteresting(const VordaLaunchAgent& agent);

/// Stops (unloads) the agent: whether it is stopped now, and a sentence for the user. One
/// that was not loaded counts as success.
std::pair<bool, std::string> bootout(const VordaLaunchAgent& agent);

/// Starts (loads) the agent: whether that was done, and a sentence for the user.
std::pair<bool, std::string> bootstrap(const VordaLaunchAgent& agent);

}  // namespace LaunchAgentScanner
