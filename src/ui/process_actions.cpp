#include <algorithm>

#include "control/process_terminator.h"
#include "platform/applications.h"
#include "platform/processes.h"
#include "ui/alerts.h"
#include "ui/status_bar_controller.h"

namespace {

constexpr double kRescanDelays[] = {0.25, 1.0, 2.5};  // seconds

/// The process that the sender's row was about when the menu was built. For a sender that belongs
/// to no row, the process that has the pid now.
ProcessReference meantProcess(std::int32_t pid, const MenuItem& sender) {
  if (sender.process && sender.process->pid == pid) return *sender.process;
  return {pid, platform::processIdentity(pid)};
}

bool isGone(const ProcessReference& process) {
  return !process.identity || platform::processIdentity(process.pid) != process.identity;
}

}  // namespace

void StatusBarController::quitProcess(Sender sender) {
  const auto* pid = std::get_if<std::int32_t>(&sender.representedObject);
  if (pid == nullptr) return;
  const ProcessReference process = meantProcess(*pid, sender);
  const auto answer = ProcessTerminator::terminate(*pid, false, process.identity);
  if (answer.first) startQuitClock(process);
  finishQuit(*pid, "Quit", "Failed", answer);
}

void StatusBarController::forceProcess(Sender sender) {
  if (const auto* process = std::get_if<VordaProcess>(&sender.representedObject)) {
    if (process->isProtected) {
      notify("Protected process", Alerts::protectedMessage(*process));
    } else {
      confirmForceQuit(Alerts::forceQuit(*process), meantProcess(process->pid, sender));
    }
  } else if (const auto* pid = std::get_if<std::int32_t>(&sender.representedObject)) {
    confirmForceQuit(Alerts::forceQuit(*pid), meantProcess(*pid, sender));
  }
}

void StatusBarController::confirmForceQuit(const Alert& question, const ProcessReference& process) {
  // A process that has ended needs no question. Its identity is checked again when the signal is
  // sent, because the question may be open for hours.
  std::pair<bool, std::string> answer = ProcessTerminator::alreadyGone(process.pid);
  if (!isGone(process)) {
    if (frontEnd_.runModal(question) != kAlertFirstButtonReturn) return;
    answer = ProcessTerminator::terminate(process.pid, true, process.identity);
    if (answer.first) quitRequests_.forget(process);
    updateNotice();
  }
  finishQuit(process.pid, "Force Quit", "Cannot force quit", answer);
}

void StatusBarController::finishQuit(std::int32_t pid, const std::string& title,
                                     const std::string& failureTitle,
                                     const std::pair<bool, std::string>& answer) {
  const auto& [ok, message] = answer;
  notify(ok ? title : failureTitle, message);
  if (ok) {
    removeFromListOptimistically(pid);
    schedulePostQuitRescans();
  } else {
    refresh();
  }
}

void StatusBarController::showDetails(Sender sender) {
  if (const auto* process = std::get_if<VordaProcess>(&sender.representedObject)) {
    frontEnd_.runModal(Alerts::details(*process));
  }
}

void StatusBarController::openDockerHelp() {
  platform::openDockerDesktop();
  frontEnd_.runModal(Alerts::quitDocker());
}

void StatusBarController::notify(const std::string& title, const std::string& message) {
  if (Alerts::isShown(title)) frontEnd_.runModal(Alerts::notice(title, message));
}

void StatusBarController::removeFromListOptimistically(std::int32_t pid) {
  // The menu is closed before the process is removed here: a front end may report the closing at
  // once, and the refresh that follows may still find the process.
  frontEnd_.cancelTracking();
  const auto isMeant = [pid](const VordaProcess& process) { return process.pid == pid; };
  std::erase_if(processes_, isMeant);
  std::erase_if(gpus_.processes, isMeant);
  rebuildMenu();
}

void StatusBarController::schedulePostQuitRescans() {
  for (const auto& item : postQuitWorkItems_) item->cancel();
  postQuitWorkItems_.clear();
  for (const double delay : kRescanDelays) {
    postQuitWorkItems_.push_back(frontEnd_.after(delay, weakRefresh()));
  }
}

/// Each quit has a clock of its own, so that another quit, which restarts the re-scans, does not
/// stop it.
void StatusBarController::startQuitClock(const ProcessReference& process) {
  std::string name = "process";
  for (const auto* list : {&gpus_.processes, &processes_}) {
    for (const VordaProcess& one : *list) {
      if (one.pid == process.pid) name = one.displayName;
    }
  }
  const bool isAsked = quitRequests_.add(process, name);
  updateNotice();
  if (!isAsked) return;
  const std::uint64_t askedAt = quitRequests_.askedAt(process);
  frontEnd_.after(waits_.quit, [weakSelf = std::weak_ptr(self_), process, askedAt] {
    const auto self = weakSelf.lock();
    if (!self) return;
    (*self)->quitRequests_.runOut(process, askedAt);
    (*self)->updateNotice();
  });
}

void StatusBarController::updateNotice() {
  quitRequests_.update();
  const std::string notice = quitRequests_.notice();
  if (notice == notice_) return;
  notice_ = notice;
  frontEnd_.setNotice(notice);
}
