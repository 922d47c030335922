#include "platform/launch_agents.h"

namespace platform {

std::span<const LaunchAgentFile> launchAgentFiles() {
  return {};
}

const LaunchAgentAnswer* loadedLaunchAgents(std::span<const LaunchAgentFile>) {
  return nullptr;
}

std::vector<ServiceAttempt> stopAttempts(const std::string&, const std::string&) {
  return {};
}

std::vector<ServiceAttempt> startAttempts(const std::string&, const std::string&) {
  return {};
}

}  // namespace platform
