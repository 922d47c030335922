#include "launch_agents/launch_agent_operation.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

/// Whether the manager says that the launch agent is not loaded.
bool saysNotLoaded(std::string_view errorText) {
  constexpr std::array<std::string_view, 2> kPhrases{"No such process", "Could not find"};
  return std::ranges::any_of(kPhrases, [errorText](std::string_view phrase) {
    return errorText.find(phrase) != std::string_view::npos;
  });
}

}  // namespace

LaunchAgentOperation::LaunchAgentOperation(const VordaLaunchAgent& launchAgent, Kind kind)
    : label_(launchAgent.label),
      kind_(kind),
      attempts_(kind == Kind::stop
                    ? platform::stopAttempts(launchAgent.label, launchAgent.plistPath)
                    : platform::startAttempts(launchAgent.label, launchAgent.plistPath)) {}

const std::optional<LaunchAgentOperation::Outcome>& LaunchAgentOperation::poll() {
  while (!outcome_ && current_ < attempts_.size()) {
    const std::optional<platform::ServiceReply> reply = attempts_[current_]();
    if (!reply) return outcome_;
    outcome_ = decision(*reply);
    ++current_;
  }
  if (!outcome_) {
    outcome_ = {false, (kind_ == Kind::stop ? "Failed to unload " : "Failed to load ") + label_};
  }
  return outcome_;
}

/// The outcome that an attempt's reply decides; none when the next attempt decides. Only the text
/// of a stop's reply matters, where "not loaded" is a success; a start of what is already loaded
/// is a failure.
std::optional<LaunchAgentOperation::Outcome> LaunchAgentOperation::decision(
    const platform::ServiceReply& reply) const {
  if (reply.status == 0) return {{true, (kind_ == Kind::stop ? "Unloaded " : "Loaded ") + label_}};
  if (kind_ == Kind::stop && saysNotLoaded(reply.errorText)) {
    return {{true, label_ + " already unloaded"}};
  }
  return std::nullopt;
}
