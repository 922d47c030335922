#include "platform/launch_agents.h"

namespace platform {

std::vector<LaunchAgentFile> launchAgentFiles() {
  return {};
}

std::optional<LaunchAgentAnswer> loadedLaunchAgents(std::span<const LaunchAgentFile>) {
  return std::nullopt;
}

std::vector<ServiceAttempt> stopAttempts(const std::string&, const std::string&) {
  return {};
}

std::vector<ServiceAttempt> startAttempts(const std::string&, const std::string&) {
  return {};
}

}  // namespace platform
