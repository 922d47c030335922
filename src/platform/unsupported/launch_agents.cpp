#include "platform/launch_agents.h"

namespace platform {

std::vector<JobFile> jobFiles() {
  return {};
}

std::optional<JobAnswer> loadedJobs(std::span<const JobFile>) {
  return std::nullopt;
}

std::vector<ServiceAttempt> stopAttempts(const std::string&, const std::string&) {
  return {};
}

std::vector<ServiceAttempt> startAttempts(const std::string&, const std::string&) {
  return {};
}

}  // namespace platform
