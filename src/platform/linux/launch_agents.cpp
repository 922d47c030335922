#include "platform/launch_agents.h"

#include <memory>
#include <optional>

#include "platform/linux/loaded_launch_agents.h"
#include "platform/linux/service_operation.h"

namespace platform {
namespace {

std::vector<ServiceAttempt> onlyAttempt(ServiceOperation::Verb verb, const std::string& label) {
  return {
      [operation = std::make_shared<ServiceOperation>(verb, label)] { return operation->poll(); }};
}

}  // namespace

const LaunchAgentAnswer* loadedLaunchAgents(std::span<const LaunchAgentFile> files) {
  static LoadedLaunchAgentsReader reader;
  static std::optional<LaunchAgentAnswer> answer;
  answer = reader.read(files);
  return answer ? &*answer : nullptr;
}

std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string&) {
  return onlyAttempt(ServiceOperation::Verb::stop, label);
}

std::vector<ServiceAttempt> startAttempts(const std::string& label, const std::string&) {
  return onlyAttempt(ServiceOperation::Verb::start, label);
}

}  // namespace platform
