#include <algorithm>
#include <array>
#include <string_view>

#include "agents/launch_agent_scanner.h"
#include "platform/launch_agents.h"

namespace LaunchAgentScanner {
namespace {

/// What a manager says of a job that it does not hold.
bool saysNotLoaded(std::string_view errorText) {
  constexpr std::array<std::string_view, 2> kPhrases{"No such process", "Could not find"};
  return std::any_of(kPhrases.begin(), kPhrases.end(), [errorText](std::string_view phrase) {
    return errorText.find(phrase) != std::string_view::npos;
  });
}

}  // namespace

std::pair<bool, std::string> bootout(const VordaLaunchAgent& agent) {
  for (const auto& attempt : platform::stopAttempts(agent.label, agent.plistPath)) {
    const platform::ServiceReply reply = attempt();
    if (reply.status == 0) return {true, "Unloaded " + agent.label};
    if (saysNotLoaded(reply.errorText)) return {true, agent.label + " already unloaded"};
  }
  return {false, "Failed to unload " + agent.label};
}

// Unlike bootout, this does not read the manager's words: an agent that is loaded already
// is a failure to load it.
std::pair<bool, std::string> bootstrap(const VordaLaunchAgent& agent) {
  for (const auto& attempt : platform::startAttempts(agent.label, agent.plistPath)) {
    if (attempt().status == 0) return {true, "Loaded " + agent.label};
  }
  return {false, "Failed to load " + agent.label};
}

}  // namespace LaunchAgentScanner
