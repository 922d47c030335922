#include "platform/macos/launchctl_attempts.h"

#include <memory>
#include <optional>

#include "platform/macos/launchctl.h"

namespace platform {

std::vector<LaunchctlCommand> stopCommands(const std::string& domain, const std::string& label,
                                           const std::string& path) {
  return {{"bootout", domain + "/" + label}, {"bootout", domain, path}, {"unload", path}};
}

std::vector<LaunchctlCommand> startCommands(const std::string& domain, const std::string& path) {
  return {{"bootstrap", domain, path}, {"load", path}};
}

std::vector<ServiceAttempt> launchctlAttempts(const std::vector<LaunchctlCommand>& commands,
                                              std::chrono::milliseconds limit) {
  const auto deadline = std::make_shared<std::optional<Clock::time_point>>();
  std::vector<ServiceAttempt> attempts;
  attempts.reserve(commands.size());
  for (const LaunchctlCommand& command : commands) {
    attempts.emplace_back([command, limit, deadline] {
      if (!*deadline) *deadline = Clock::now() + limit;
      if (Clock::now() >= **deadline) return ServiceReply{-1, ""};
      const LaunchctlReply reply = runLaunchctl(command, Capture::errors, **deadline);
      return ServiceReply{reply.status, reply.text};
    });
  }
  return attempts;
}

}  // namespace platform
