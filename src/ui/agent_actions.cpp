#include <algorithm>

#include "agents/launch_agent_scanner.h"
#include "platform/applications.h"
#include "ui/alerts.h"
#include "ui/status_bar_controller.h"

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
  const auto [ok, message] = LaunchAgentScanner::bootout(agent);
  notify(ok ? "Unload" : "Failed", message);
  frontEnd_.cancelTracking();
  refresh(true, false);
  schedulePostQuitRescans();
}

void StatusBarController::loadAgent(Sender sender) {
  const auto* agent = std::get_if<VordaLaunchAgent>(&sender.representedObject);
  if (agent == nullptr) return;
  const auto [ok, message] = LaunchAgentScanner::bootstrap(*agent);
  notify(ok ? "Load" : "Failed", message);
  frontEnd_.cancelTracking();
  refresh(true, false);
}

void StatusBarController::openAM() {
  platform::openSystemMonitor();
}

void StatusBarController::about() {
  frontEnd_.runModal(about_);
}

void StatusBarController::quitApp() {
  frontEnd_.terminate();
}
