#include <algorithm>

#include "ui/alerts.h"
#include "ui/status_bar_controller.h"

namespace {

constexpr double kJobInterval = 0.1;  // seconds

}  // namespace

void StatusBarController::unloadLaunchAgent(Sender sender) {
  if (const auto* launchAgent = std::get_if<VordaLaunchAgent>(&sender.representedObject)) {
    confirmUnload(*launchAgent);
  }
}

void StatusBarController::unloadByLabel(Sender sender) {
  const auto* label = std::get_if<std::string>(&sender.representedObject);
  if (label == nullptr) return;
  const auto launchAgent = std::find_if(allLaunchAgents_.begin(), allLaunchAgents_.end(),
                                        [label](const auto& one) { return one.label == *label; });
  if (launchAgent == allLaunchAgents_.end()) return;
  confirmUnload(VordaLaunchAgent(*launchAgent));  // a copy: the list changes while it asks
}

void StatusBarController::confirmUnload(const VordaLaunchAgent& launchAgent) {
  if (frontEnd_.runModal(Alerts::unload(launchAgent)) != kAlertFirstButtonReturn) return;
  beginLaunchAgentJob({launchAgent, LaunchAgentJob::Kind::stop});
}

void StatusBarController::loadLaunchAgent(Sender sender) {
  const auto* launchAgent = std::get_if<VordaLaunchAgent>(&sender.representedObject);
  if (launchAgent != nullptr) beginLaunchAgentJob({*launchAgent, LaunchAgentJob::Kind::start});
}

/// What was asked last of a launch agent replaces what was asked of it before, and so does its
/// outcome.
void StatusBarController::beginLaunchAgentJob(LaunchAgentJob job) {
  std::erase_if(launchAgentJobs_, [&job](const auto& one) { return one.label() == job.label(); });
  if (job.poll()) {
    tellOutcome(job);
    return;
  }
  launchAgentJobs_.push_back(std::move(job));
  if (!launchAgentJobTimer_) {
    launchAgentJobTimer_ = frontEnd_.every(kJobInterval, [weakSelf = std::weak_ptr(self_)] {
      if (const auto self = weakSelf.lock()) (*self)->lookAfterLaunchAgentJobs();
    });
  }
  frontEnd_.cancelTracking();
  refresh();
}

/// An outcome waits until nothing is open that its alert, or the menu's change, would disturb.
void StatusBarController::lookAfterLaunchAgentJobs() {
  for (LaunchAgentJob& job : launchAgentJobs_) job.poll();
  while (!menuIsOpen_ && actionsUnderWay_ == 0) {
    const auto ended = std::find_if(launchAgentJobs_.begin(), launchAgentJobs_.end(),
                                    [](const auto& job) { return job.outcome().has_value(); });
    if (ended == launchAgentJobs_.end()) break;
    const LaunchAgentJob job = std::move(*ended);
    launchAgentJobs_.erase(ended);
    const ActionUnderWay telling(actionsUnderWay_);
    tellOutcome(job);
  }
  if (launchAgentJobs_.empty() && launchAgentJobTimer_) {
    launchAgentJobTimer_->cancel();
    launchAgentJobTimer_.reset();
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
