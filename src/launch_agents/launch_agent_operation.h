#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "launch_agents/vorda_launch_agent.h"
#include "platform/launch_agents.h"

/// Stopping (unloading) or starting (loading) one launch agent: the platform's attempts, one after
/// the other, until one of them decides.
class LaunchAgentOperation {
 public:
  enum class Kind { stop, start };

  /// Whether the launch agent is now as it was asked to be, and a sentence for the user.
  using Outcome = std::pair<bool, std::string>;

  LaunchAgentOperation(const VordaLaunchAgent& launchAgent, Kind kind);

  const std::string& label() const { return label_; }
  Kind kind() const { return kind_; }

  /// Continues it; the first call starts it. Returns how it ended; none while it goes on. Waits
  /// only where the platform's attempts do.
  const std::optional<Outcome>& poll();

  /// What the last poll said.
  const std::optional<Outcome>& outcome() const { return outcome_; }

 private:
  std::optional<Outcome> decision(const platform::ServiceReply& reply) const;

  std::string label_;
  Kind kind_;
  std::vector<platform::ServiceAttempt> attempts_;
  std::size_t current_ = 0;
  std::optional<Outcome> outcome_;
};
