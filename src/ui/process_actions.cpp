#include <algorithm>
#include <chrono>
#include <iterator>

#include "control/process_terminator.h"
#include "platform/applications.h"
#include "platform/mapped_memory.h"
#include "platform/process_place.h"
#include "platform/processes.h"
#include "scanner/memory_format.h"
#include "ui/alerts.h"
#include "ui/family_view.h"
#include "ui/refresh_times.h"
#include "ui/status_bar_controller.h"

namespace {

/// The process that the sender's row was about when the menu was built. For a sender that belongs
/// to no row, the process that has the pid now.
ProcessReference meantProcess(std::int32_t pid, const MenuItem& sender) {
  if (sender.process && sender.process->pid == pid) return *sender.process;
  return {pid, platform::processIdentity(pid)};
}

/// Of one that is not the user's own, and that the user may want to tell its owner of. Asked
/// before the identity, so that it is not told of a later process with the pid.
std::string placeOf(const VordaProcess& process) {
  if (!process.isProtected) return {};
  std::string place = platform::placeOfProcess(process.pid);
  const bool isSame =
      process.identity && platform::processIdentity(process.pid) == process.identity;
  return isSame ? place : std::string();
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

void StatusBarController::showDetails(Sender sender) {
  if (const auto* process = std::get_if<VordaProcess>(&sender.representedObject)) {
    frontEnd_.runModal(Alerts::details(*process, fairShareLines(*process), placeOf(*process)));
  }
}

/// How much of all memory is its and its family's, where that is another figure than the footprint.
/// The kernel takes a while to count: what it has not counted in time is left out.
std::vector<std::string> StatusBarController::fairShareLines(const VordaProcess& process) const {
  constexpr std::chrono::milliseconds kBudget{250};
  constexpr std::size_t kMostMembers = 64;
  if (process.isProtected || (!process.mapped && !process.family)) return {};
  std::vector<const VordaProcess*> asked{&process};
  const FamilyViews families = this->families();
  if (const FamilyView* family = families.of(process);
      family != nullptr && family->members.size() <= kMostMembers) {
    std::ranges::copy(family->members, std::back_inserter(asked));
  }
  std::vector<std::int32_t> pids;
  pids.reserve(asked.size());
  for (const VordaProcess* one : asked) pids.push_back(one->pid);
  const auto shares = platform::fairShares(pids, kBudget);

  std::vector<std::string> lines;
  double sum = 0;
  bool isWhole = asked.size() > 1;
  for (std::size_t i = 0; i < asked.size(); ++i) {
    // A pid that is still the same process's was so while it was read.
    const bool isKnown = shares[i] && !isGone({asked[i]->pid, asked[i]->identity});
    const double memMB = static_cast<double>(shares[i].value_or(0)) / 1048576;
    if (i == 0 && isKnown) lines.push_back("Its fair share: " + MemoryFormat::detail(memMB));
    if (i > 0) sum += memMB;
    isWhole = isWhole && (isKnown || i == 0);
  }
  if (isWhole) {
    lines.push_back("Its " + std::to_string(asked.size() - 1) +
                    " processes together: " + MemoryFormat::detail(sum));
  }
  return lines;
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
  rebuildMenu();
}

void StatusBarController::schedulePostQuitRescans() {
  for (const auto& item : postQuitWorkItems_) item->cancel();
  postQuitWorkItems_.clear();
  for (const double delay : RefreshTimes::kAfterQuit) {
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
  const std::string notice = unfinishedQuits_.notice();
  if (notice == notice_) return;
  notice_ = notice;
  frontEnd_.setNotice(notice);
}
