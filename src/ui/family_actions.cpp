#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "control/process_terminator.h"
#include "platform/processes.h"
#include "ui/alerts.h"
#include "ui/family_view.h"
#include "ui/refresh_times.h"
#include "ui/status_bar_controller.h"

namespace {

constexpr double kForcePatience = 1;   // in seconds: killed processes are gone by then
constexpr double kAskedPatience = 3;   // after the second request
constexpr double kBusyPatience = 0.5;  // while the user is looking at something else
constexpr std::size_t kMostNamedPids = 5;

bool stillRuns(const ProcessReference& process) {
  using platform::ProcessState;
  return process.identity && platform::processIdentity(process.pid) == process.identity &&
         platform::processState(process.pid).value_or(ProcessState::runs) != ProcessState::ended;
}

/// The members that are the user's own, the head first.
std::vector<ProcessReference> ownMembers(const FamilyView& family) {
  std::vector<ProcessReference> members;
  for (const VordaProcess* member : family.members) {
    if (!member->isProtected) members.push_back({member->pid, member->identity});
  }
  return members;
}

}  // namespace

void StatusBarController::endFamily(Sender sender, bool force) {
  const auto* head = std::get_if<std::int32_t>(&sender.representedObject);
  if (head == nullptr) return;
  FamilyEnding ending{.force = force};
  Alert question;
  {
    // The sample may be another when the question is answered.
    const FamilyViews families = this->families();
    const FamilyView* family = families.headedBy(*head);
    if (family == nullptr) return refresh();  // it has ended
    ending.name = family->name;
    ending.members = ownMembers(*family);
    question = Alerts::endFamily(*family, force);
  }
  if (ending.members.empty()) return refresh();
  if (frontEnd_.runModal(question) != kAlertFirstButtonReturn) return;

  // The head first: it might start others in the place of those that end.
  tell(ending, ending.members.front());
  frontEnd_.cancelTracking();
  if (force) {
    // Only those that were named are ended, and only if they are still the same.
    for (std::size_t i = 1; i < ending.members.size(); ++i) tell(ending, ending.members[i]);
    tellLater(std::move(ending), kForcePatience);
  } else {
    afterFamily(RefreshTimes::kFamilyPatience, std::move(ending),
                &StatusBarController::askRestOfFamily);
  }
  refreshNow();
  schedulePostQuitRescans();
}

void StatusBarController::tell(FamilyEnding& ending, const ProcessReference& process) {
  const auto [ok, reason] =
      ProcessTerminator::terminate(process.pid, ending.force, process.identity);
  if (!ok && ending.reason.empty()) ending.reason = reason;
}

void StatusBarController::askRestOfFamily(FamilyEnding ending) {
  bool anyLeft = false;
  for (const ProcessReference& member : ending.members) {
    if (!stillRuns(member)) continue;
    anyLeft = true;
    tell(ending, member);
  }
  schedulePostQuitRescans();
  tellLater(std::move(ending), anyLeft ? kAskedPatience : 0);
}

void StatusBarController::tellLater(FamilyEnding ending, double seconds) {
  afterFamily(seconds, std::move(ending), &StatusBarController::tellFamilyOutcome);
}

/// How it ended, in one sentence; it waits until menu and alerts are closed.
void StatusBarController::tellFamilyOutcome(FamilyEnding ending) {
  if (menuIsOpen_ || actionsUnderWay_ > 0) return tellLater(std::move(ending), kBusyPatience);
  const ActionUnderWay telling(actionsUnderWay_);
  std::string pids;
  std::size_t left = 0;
  for (const ProcessReference& member : ending.members) {
    if (!stillRuns(member)) continue;
    if (left++ < kMostNamedPids) pids += (pids.empty() ? "" : ", ") + std::to_string(member.pid);
  }
  const std::string all = std::to_string(ending.members.size());
  if (left == 0) {
    notify("Quit", "All " + all + " processes of " + ending.name + " have ended.");
  } else {
    if (left > kMostNamedPids) pids += ", …";
    notify("Cannot end all", std::to_string(left) + " of " + all + " processes of " + ending.name +
                                 " still " + (left == 1 ? "runs" : "run") + " (pid " + pids + ")" +
                                 (ending.reason.empty() ? "." : ": " + ending.reason));
  }
  refresh();
}

void StatusBarController::afterFamily(double seconds, FamilyEnding ending,
                                      void (StatusBarController::*next)(FamilyEnding)) {
  frontEnd_.after(seconds, [weakSelf = std::weak_ptr(self_), ending = std::move(ending), next] {
    if (const auto self = weakSelf.lock()) ((*self)->*next)(ending);
  });
}
