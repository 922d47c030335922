#include <algorithm>
#include <cstddef>
#include <utility>

#include "control/process_terminator.h"
#include "platform/applications.h"
#include "platform/processes.h"
#include "scanner/memory_format.h"
#include "ui/alerts.h"
#include "ui/fair_share_inquiry.h"
#include "ui/family_rows.h"
#include "ui/process_whereabouts.h"
#include "ui/status_bar_controller.h"
#include "ui/waiting_times.h"

namespace {

/// The process that the sender's row was about when the menu was built. For a sender that belongs
/// to no row, the process that has the pid now.
ProcessReference meantProcess(std::int32_t pid, const MenuItem& sender) {
  if (sender.process && sender.process->pid == pid) return *sender.process;
  return {pid, platform::processIdentity(pid)};
}

bool isGone(const ProcessReference& process) {
  return !process.identity || platform::processIdentity(process.pid) != process.identity;
}

/// `shares`: first the process's own, then those of its family's members, if it has one.
std::vector<std::string> fairShareLines(const FairShareInquiry::Shares& shares) {
  std::vector<std::string> lines;
  if (shares.front()) {
    lines.push_back("Its fair share: " + MemoryFormat::detail(*shares.front()));
  }
  double sum = 0;
  for (std::size_t i = 1; i < shares.size(); ++i) {
    if (!shares[i]) return lines;
    sum += *shares[i];
  }
  if (shares.size() > 1) {
    lines.push_back("Its " + std::to_string(shares.size() - 1) +
                    " processes together: " + MemoryFormat::detail(sum));
  }
  return lines;
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
  if (const auto* process = recordIn<VordaProcess>(sender.representedObject)) {
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
    if (answer.first) unfinishedQuits_.forget(process);
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

/// What takes a while to find out appears in the open alert.
void StatusBarController::showDetails(Sender sender) {
  const auto* process = recordIn<VordaProcess>(sender.representedObject);
  if (process == nullptr) return;
  const std::string place = placeOfOthers(*process);
  const std::vector<ProcessReference> members = ownMembersOf(*process);
  FairShareInquiry inquiry(frontEnd_);
  if (!process->isProtected && (process->mapped || !members.empty())) {
    std::vector<ProcessReference> asked{{process->pid, process->identity}};
    asked.insert(asked.end(), members.begin(), members.end());
    inquiry.ask(std::move(asked), [&](const FairShareInquiry::Shares& shares) {
      const auto lines = fairShareLines(shares);
      if (!lines.empty()) frontEnd_.alertChanged(Alerts::details(*process, lines, place));
    });
  }
  frontEnd_.runModal(Alerts::details(*process, {}, place));
}

/// The processes of its family, itself included; empty where it has none.
std::vector<ProcessReference> StatusBarController::ownMembersOf(const VordaProcess& process) const {
  std::vector<ProcessReference> members;
  const ShownFamilies families = this->families();
  const ShownFamily* const family = families.of(process);
  if (family == nullptr) return members;
  for (const VordaProcess* member : family->members) {
    if (!member->isProtected) members.push_back({member->pid, member->identity});
  }
  return members;
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
  std::erase_if(gpus_.unlisted, isMeant);
  sys_ = SystemMemory::snapshot();
  rebuildMenu();
}

void StatusBarController::schedulePostQuitRescans() {
  for (const auto& item : postQuitWorkItems_) item->cancel();
  postQuitWorkItems_.clear();
  for (const double delay : WaitingTimes::kAfterQuit) {
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
  const bool isAsked = unfinishedQuits_.add(process, name);
  updateNotice();
  if (!isAsked) return;
  const std::uint64_t askedAt = unfinishedQuits_.askedAt(process);
  frontEnd_.after(waits_.quit, [weakSelf = std::weak_ptr(self_), process, askedAt] {
    const auto self = weakSelf.lock();
    if (!self) return;
    (*self)->unfinishedQuits_.runOut(process, askedAt);
    (*self)->updateNotice();
  });
}

void StatusBarController::updateNotice() {
  unfinishedQuits_.update();
  std::string notice = unfinishedQuits_.notice();
  if (memoryWarning_) {
    notice += (notice.empty() ? "" : "\n") + memoryWarning_->title + ": " + memoryWarning_->text;
  }
  if (notice == notice_) return;
  notice_ = notice;
  frontEnd_.setNotice(notice);
}
