#pragma once

#include "launch_agents/vorda_launch_agent.h"

// Which launch agents the program tells of, and which of them the menu shows.

namespace LaunchAgentScanner {

/// Whether label or program hold one of the words that AI tooling goes by, in any case.
bool isInteresting(const VordaLaunchAgent& launchAgent);

/// Whether it is one that the program tells of: it is kept alive, or interesting.
bool isListed(const VordaLaunchAgent& launchAgent);

/// Whether one of those has a row in the menu: it is loaded, or kept alive, or being stopped or
/// started (`isUnderWay`).
bool hasRow(const VordaLaunchAgent& launchAgent, bool isUnderWay);

}  // namespace LaunchAgentScanner
