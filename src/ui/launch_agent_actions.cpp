#include <algorithm>

#include "ui/alerts.h"
#include "ui/status_bar_controller.h"
#include "ui/waiting_times.h"

void StatusBarController::unloadLaunchAgent(Sender sender) {
  if (const auto* launchAgent = recordIn<VordaLaunchAgent>(sender.representedObject)) {
    confirmUnload(*launchAgent);
  }
}

void StatusBarController::unloadByLabel(Sender sender) {
  const auto* label = std::get_if<std::string>(&sender.representedObject);
  if (label == nullptr) return;
  const auto& all = launchAgentScan_.all();
  const auto launchAgent = std::ranges::find(all, *label, &VordaLaunchAgent::label);
  if (launchAgent == all.end()) return;
  confirmUnload(VordaLaunchAgent(
      *launchAgent));  // a copy, because the list changes while the question is open
}

void StatusBarController::confirmUnload(const VordaLaunchAgent& launchAgent) {
  if (frontEnd_.runModal(Alerts::unload(launchAgent)) != kAlertFirstButtonReturn) return;
  beginOperation({launchAgent, LaunchAgentOperation::Kind::stop});
}

void StatusBarController::loadLaunchAgent(Sender sender) {
  const auto* launchAgent = recordIn<VordaLaunchAgent>(sender.representedObject);
  if (launchAgent != nullptr) beginOperation({*launchAgent, LaunchAgentOperation::Kind::start});
}

/// A new operation on the same launch agent replaces the one before, whose outcome is then never
/// shown.
void StatusBarController::beginOperation(LaunchAgentOperation operation) {
  std::erase_if(launchAgentOperations_,
                [&operation](const auto& one) { return one.label() == operation.label(); });
  if (operation.poll()) {
    tellOutcome(operation);
    return;
  }
  launchAgentOperations_.push_back(std::move(operation));
  if (!launchAgentOperationTimer_) {
    launchAgentOperationTimer_ =
        frontEnd_.every(WaitingTimes::kOperationInterval, [weakSelf = std::weak_ptr(self_)] {
          if (const auto self = weakSelf.lock()) (*self)->lookAfterOperations();
        });
  }
  frontEnd_.cancelTracking();
  refresh();
}

/// Outcomes are shown only while neither the menu nor an alert is open, which they would disturb.
void StatusBarController::lookAfterOperations() {
  for (LaunchAgentOperation& operation : launchAgentOperations_) operation.poll();
  while (!menuIsOpen_ && actionsUnderWay_ == 0) {
    const auto ended = std::ranges::find_if(launchAgentOperations_, [](const auto& operation) {
      return operation.outcome().has_value();
    });
    if (ended == launchAgentOperations_.end()) break;
    const LaunchAgentOperation operation = std::move(*ended);
    launchAgentOperations_.erase(ended);
    const ActionUnderWay telling(actionsUnderWay_);
    tellOutcome(operation);
  }
  if (launchAgentOperations_.empty() && launchAgentOperationTimer_) {
    launchAgentOperationTimer_->cancel();
    launchAgentOperationTimer_.reset();
  }
}

void StatusBarController::tellOutcome(const LaunchAgentOperation& operation) {
  const auto& [ok, message] = *operation.outcome();
  const bool stops = operation.kind() == LaunchAgentOperation::Kind::stop;
  notify(ok ? (stops ? "Unload" : "Load") : "Failed", message);
  frontEnd_.cancelTracking();
  refresh();
  if (stops) schedulePostQuitRescans();
}
