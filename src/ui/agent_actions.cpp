#include <algorithm>

#include "ui/alerts.h"
#include "ui/status_bar_controller.h"

namespace {

constexpr double kJobInterval = 0.1;  // seconds

}  // namespace

void StatusBarController::unloadAgent(Sender sender) {
  if (const auto* agent = std::get_if<VordaLaunchAgent>(&sender.representedObject)) {
    confirmUnload(*agent);
  }
}

void StatusBarController::unloadByLabel(Sender sender) {
  const auto* label = std::get_if<std::string>(&sender.representedObject);
  if (label == nullptr) return;
  const auto agent = std::find_if(allAgents_.begin(), allAgents_.end(),
                                  [label](const auto& one) { return one.label == *label; });
  if (agent == allAgents_.end()) return;
  confirmUnload(VordaLaunchAgent(*agent));  // a copy: the list changes while it asks
}

void StatusBarController::confirmUnload(const VordaLaunchAgent& agent) {
  if (frontEnd_.runModal(Alerts::unload(agent)) != kAlertFirstButtonReturn) return;
  beginAgentJob({agent, LaunchAgentJob::Kind::stop});
}

void StatusBarController::loadAgent(Sender sender) {
  const auto* agent = std::get_if<VordaLaunchAgent>(&sender.representedObject);
  if (agent != nullptr) beginAgentJob({*agent, LaunchAgentJob::Kind::start});
}

/// What was asked last of an agent replaces what was asked of it before, and so does its outcome.
void StatusBarController::beginAgentJob(LaunchAgentJob job) {
  std::erase_if(agentJobs_, [&job](const auto& one) { return one.label() == job.label(); });
  if (job.poll()) {
    tellOutcome(job);
    return;
  }
  agentJobs_.push_back(std::move(job));
  if (!agentJobTimer_) {
    agentJobTimer_ = frontEnd_.every(kJobInterval, [weakSelf = std::weak_ptr(self_)] {
      if (const auto self = weakSelf.lock()) (*self)->lookAfterAgentJobs();
    });
  }
  frontEnd_.cancelTracking();
  refresh();
}

/// An outcome waits until nothing is open that its alert, or the menu's change, would disturb.
void StatusBarController::lookAfterAgentJobs() {
  for (LaunchAgentJob& job : agentJobs_) job.poll();
  while (!menuIsOpen_ && actionsUnderWay_ == 0) {
    const auto ended = std::find_if(agentJobs_.begin(), agentJobs_.end(),
                                    [](const auto& job) { return job.outcome().has_value(); });
    if (ended == agentJobs_.end()) break;
    const LaunchAgentJob job = std::move(*ended);
    agentJobs_.erase(ended);
    const ActionUnderWay telling(actionsUnderWay_);
    tellOutcome(job);
  }
  if (agentJobs_.empty() && agentJobTimer_) {
    agentJobTimer_->cancel();
    agentJobTimer_.reset();
  }
}

void StatusBarController::tellOutcome(const LaunchAgentJob& job) {
  const auto& [ok, message] = *job.outcome();
  const bool stops = job.kind() == LaunchAgentJob::Kind::stop;
  notify(ok ? (stops ? "Unload" : "Load") : "Failed", message);
  frontEnd_.cancelTracking();
  refresh();
  if (stops) schedulePostQuitRescans();
}
