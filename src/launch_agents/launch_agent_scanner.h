#pragma once

#include <vector>

#include "launch_agents/vorda_launch_agent.h"

/// Lists what the user's service manager may start by itself.
namespace LaunchAgentScanner {

/// Every launch agent file of the user's folder and the machine's, with its state. Those that look
/// like AI tooling come first; then by label, in byte order; equals as found. Synchronous; never
/// fails. Empty when the manager can't be asked, because then nothing is known about what runs.
std::vector<VordaLaunchAgent> scan();

/// Whether label or program hold one of the words that AI tooling goes by, in any case.
bool isInteresting(const VordaLaunchAgent& launchAgent);

/// Whether it is one that the program tells of: it is kept alive, or interesting.
bool isListed(const VordaLaunchAgent& launchAgent);

/// Whether one of those has a row in the menu: it is loaded, or kept alive, or being stopped or
/// started (`isUnderWay`).
bool hasRow(const VordaLaunchAgent& launchAgent, bool isUnderWay);

}  // namespace LaunchAgentScanner
