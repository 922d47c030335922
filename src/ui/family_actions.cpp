#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <utility>

#include "control/process_terminator.h"
#include "platform/processes.h"
#include "ui/alerts.h"
#include "ui/family_rows.h"
#include "ui/status_bar_controller.h"
#include "ui/waiting_times.h"

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
std::vector<ProcessReference> ownMembers(const ShownFamily& family) {
  std::vector<ProcessReference> members;
  for (const VordaProcess* member : family.members) {
    if (!member->isProtected) members.push_back({member->pid, member->identity});
  }
  return members;
}

std::vector<std::int32_t> running(const std::vector<ProcessReference>& processes) {
  std::vector<std::int32_t> pids;
  for (const ProcessReference& process : processes) {
    if (stillRuns(process)) pids.push_back(process.pid);
  }
  return pids;
}

/// " still run (pid 11, 12)"
std::string stillRun(const std::vector<std::int32_t>& pids) {
  std::string named;
  for (std::size_t i = 0; i < std::min(pids.size(), kMostNamedPids); ++i) {
    named += (i == 0 ? "" : ", ") + std::to_string(pids[i]);
  }
  if (pids.size() > kMostNamedPids) named += ", …";
  return std::string(" still ") + (pids.size() == 1 ? "runs" : "run") + " (pid " + named + ")";
}

}  // namespace

void StatusBarController::endFamily(Sender sender, bool force) {
  const auto* head = std::get_if<std::int32_t>(&sender.representedObject);
  if (head == nullptr) return;
  FamilyEnding ending{.force = force};
  Alert question;
  {
    // The sample may be another when the question is answered.
    const ShownFamilies families = this->families();
    const ShownFamily* family = families.headedBy(*head);
    if (family == nullptr) return refresh();  // it has ended
    ending.name = family->name;
    ending.members = ownMembers(*family);
    question = Alerts::endFamily(*family, force);
  }
  if (ending.members.empty()) return refresh();
  if (frontEnd_.runModal(question) != kAlertFirstButtonReturn) return;

  if (force) {
    sample();  // while the head lives: later nothing tells that new members are of this family
    noteNewcomers(ending, *head);
  }
  // The head first: it might start others in the place of those that end.
  tell(ending, ending.members.front());
  frontEnd_.cancelTracking();
  if (force) {
    killRestOfFamily(ending, *head);
    tellLater(std::move(ending), kForcePatience);
  } else {
    afterFamily(WaitingTimes::kFamilyPatience, std::move(ending),
                &StatusBarController::askRestOfFamily);
  }
  refreshNow();
  schedulePostQuitRescans();
}

/// Ends only members that the question named, and of these only those that are still the same
/// process and have not become members of another family since.
void StatusBarController::killRestOfFamily(FamilyEnding& ending, std::int32_t head) {
  sample();
  noteNewcomers(ending, head);
  std::set<std::int32_t> heads{head};
  for (const ProcessReference& member : ending.members) heads.insert(member.pid);
  std::set<std::int32_t> ofOthers;
  const ShownFamilies families = this->families();
  for (const auto& [otherHead, family] : families.all()) {
    if (heads.contains(otherHead)) continue;
    for (const VordaProcess* member : family.members) ofOthers.insert(member->pid);
  }
  for (std::size_t i = 1; i < ending.members.size(); ++i) {
    if (!ofOthers.contains(ending.members[i].pid)) tell(ending, ending.members[i]);
  }
}

void StatusBarController::noteNewcomers(FamilyEnding& ending, std::int32_t head) const {
  const ShownFamilies families = this->families();
  const ShownFamily* const family = families.headedBy(head);
  if (family == nullptr) return;
  for (const ProcessReference& member : ownMembers(*family)) {
    const auto isMember = [&member](const auto& list) {
      return std::ranges::find(list, member) != list.end();
    };
    if (!isMember(ending.members) && !isMember(ending.newcomers))
      ending.newcomers.push_back(member);
  }
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
  const std::string all = std::to_string(ending.members.size());
  const std::vector<std::int32_t> left = running(ending.members);
  const std::vector<std::int32_t> newcomers = running(ending.newcomers);
  if (!left.empty()) {
    notify("Cannot end all", std::to_string(left.size()) + " of " + all + " processes of " +
                                 ending.name + stillRun(left) +
                                 (ending.reason.empty() ? "." : ": " + ending.reason));
  } else if (!newcomers.empty()) {
    notify("Cannot end all", "All " + all + " processes of " + ending.name + " have ended, but " +
                                 std::to_string(newcomers.size()) + " that began since" +
                                 stillRun(newcomers) + ".");
  } else {
    notify("Quit", "All " + all + " processes of " + ending.name + " have ended.");
  }
  refresh();
}

void StatusBarController::afterFamily(double seconds, FamilyEnding ending,
                                      void (StatusBarController::*next)(FamilyEnding)) {
  frontEnd_.after(seconds, [weakSelf = std::weak_ptr(self_), ending = std::move(ending), next] {
    if (const auto self = weakSelf.lock()) ((*self)->*next)(ending);
  });
}
