#include "platform/launch_agents.h"

#include <memory>
#include <optional>

#include "platform/linux/loaded_units.h"
#include "platform/linux/systemd_operation.h"

namespace platform {
namespace {

std::vector<ServiceAttempt> onlyAttempt(SystemdOperation::Verb verb, const std::string& label) {
  return {
      [operation = std::make_shared<SystemdOperation>(verb, label)] { return operation->poll(); }};
}

}  // namespace

const LaunchAgentAnswer* loadedLaunchAgents(std::span<const LaunchAgentFile> files) {
  static LoadedUnits reader;
  static std::optional<LaunchAgentAnswer> answer;
  answer = reader.read(files);
  return answer ? &*answer : nullptr;
}

std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string&) {
  return onlyAttempt(SystemdOperation::Verb::stop, label);
}

std::vector<ServiceAttempt> startAttempts(const std::string& label, const std::string&) {
  return onlyAttempt(SystemdOperation::Verb::start, label);
}

}  // namespace platform
