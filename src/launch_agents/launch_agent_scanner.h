#pragma once

#include <vector>

#include "launch_agents/vorda_launch_agent.h"
#include "platform/launch_agents.h"

/// Lists what the user's service manager may start by itself.
namespace LaunchAgentScanner {

/// Every launch agent file of the user's folder and the machine's, with its state. Those that look
/// like AI tooling come first; then by label, in byte order; equals as found. Synchronous; never
/// fails. Empty when the manager can't be asked, because then nothing is known about what runs.
std::vector<VordaLaunchAgent> scan();

/// Scans again and again. What it tells is what scan() tells at that moment; but what the files say
/// is looked at only when they say something else, and where nothing is new it allocates nothing.
class RepeatedScan {
 public:
  const std::vector<VordaLaunchAgent>& scan();
  /// All that the last scan has found, and what it returned.
  const std::vector<VordaLaunchAgent>& all() const { return all_; }
  /// Of those that the last scan has found: that look like AI tooling or are kept alive.
  const std::vector<VordaLaunchAgent>& ofInterest() const { return ofInterest_; }

 private:
  std::vector<platform::LaunchAgentFile> files_;
  std::vector<VordaLaunchAgent> all_;
  std::vector<VordaLaunchAgent> ofInterest_;
};

}  // namespace LaunchAgentScanner
