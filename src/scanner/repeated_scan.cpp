#include "scanner/repeated_scan.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "launch_agents/launch_agent_scanner.h"
#include "platform/users.h"
#include "scanner/command_line/arguments.h"
#include "scanner/credentials/credential_mask.h"
#include "scanner/family_borders.h"
#include "scanner/memory_units.h"
#include "scanner/naming/friendly_naming.h"
#include "scanner/process_scanner.h"
#include "scanner/roles/role_by_words.h"
#include "scanner/scan_order.h"
#include "scanner/waiting_launchers.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

/// The kernel and what runs the session: never shown.
bool isExcludedName(std::string_view name) {
  return name == "kernel_task" || name == "launchd" || name == "WindowServer";
}

/// Longer than any name or detail needs, and short enough to be kept for thousands of processes.
constexpr std::size_t kLongestStoredLine = 8 << 10;

std::string stored(std::string_view commandLine) {
  return std::string(text::withinBytes(commandLine, kLongestStoredLine));
}

/// In MiB; 0 when unreadable.
double footprintMB(std::int32_t pid) {
  return static_cast<double>(platform::physicalFootprint(pid).value_or(0)) / kBytesPerMB;
}

/// Strings that are there already are used again.
void setLabels(std::vector<std::string>& labels, std::span<const VordaLaunchAgent> launchAgents,
               std::int32_t pid, std::optional<std::uint64_t> startTime) {
  std::size_t count = 0;
  for (const auto& launchAgent : launchAgents) {
    if (!launchAgent.runsAs(pid, startTime)) continue;
    if (count == labels.size()) labels.emplace_back();
    labels[count++] = launchAgent.label;
  }
  labels.resize(count);
}

/// The name of a launcher while what it has started has the role: its own.
std::string launcherName(std::span<const std::string_view> arguments) {
  SearchedLine line;
  line.read(arguments.first(1), arguments.front());
  return nameOf(line, LabRole::none, {}).displayName;
}

/// Takes the role from a launcher's row, or gives it back. The name that goes with the other state
/// is kept in the cache.
void takeRole(CachedProcess& process, VordaProcess& row) {
  row.labRole = LabRole::none;
  std::swap(row.displayName, process.otherName->ofLauncher);
}
void giveRole(CachedProcess& process) {
  if (process.row->labRole == process.role) return;
  process.row->labRole = process.role;
  std::swap(process.row->displayName, process.otherName->ofLauncher);
}

/// A server whose command line names no model is called after the one that it has mapped.
void nameMappedModel(VordaProcess& row) {
  if (row.labRole != LabRole::inference || !row.mapped || row.mapped->modelMB == 0) return;
  const std::string& file = row.mapped->files.front().name;
  if (file.starts_with("sha256-")) return;
  constexpr std::string_view kNoModel = ": LLM";
  const std::size_t end = std::min(row.displayName.find("  (:"), row.displayName.size());
  const std::string_view name = std::string_view(row.displayName).substr(0, end);
  const bool isUnnamed = name.ends_with(kNoModel);
  if (!isUnnamed && name.find(": ") != std::string_view::npos) return;
  const std::size_t begin = isUnnamed ? end - kNoModel.size() : end;
  row.displayName.replace(begin, end - begin, ": " + basenameModel(file));
}

}  // namespace

std::vector<VordaProcess> scan(double minMemMB) {
  return scan(minMemMB, LaunchAgentScanner::scan());
}

std::vector<VordaProcess> scan(double minMemMB, std::span<const VordaLaunchAgent> launchAgents,
                               std::span<const std::int32_t> alsoPids) {
  std::vector<VordaProcess> processes;
  RepeatedScan().scan(minMemMB, launchAgents, processes, alsoPids);
  return processes;
}

void RepeatedScan::scan(double minMemMB, std::span<const VordaLaunchAgent> launchAgents,
                        std::vector<VordaProcess>& processes,
                        std::span<const std::int32_t> alsoPids) {
  const std::int32_t ownPid = platform::ownPid();
  ownUid_ = platform::ownUid();
  ownerNames_.beginScan();
  tree_.clear();
  cache_.begin(processes);
  waiting_.clear();
  cache_.giveBack(unlisted_);
  families_.begin(ownPid);
  for (const std::int32_t pid : platform::allPids()) {
    if (pid < 1 || !platform::lookAtProcess(pid, facts_)) continue;
    CachedProcess& process = cache_.of(pid);
    process.isFilled = false;
    isRead_ = false;
    memMB_.reset();
    const auto fingerprint = facts_.fingerprint;
    if ((!fingerprint || process.fingerprint != fingerprint) && !learn(process)) continue;
    tree_.add(pid, facts_.parent);
    families_.add({.startTime = facts_.startTime,
                   .parent = facts_.parent,
                   .session = facts_.session,
                   .pid = pid,
                   .role = process.role,
                   .isBorder = process.isFamilyBorder});
    const bool isWanted = std::ranges::binary_search(alsoPids, pid);
    const double leastMB = isWanted ? 0 : minMemMB;
    const bool isListed = pid != ownPid && this->isListed(process, leastMB) &&
                          platform::confirmProcess(process.pid, facts_);
    if (!isListed) {
      // A member of the last scan mostly is one still: filled now, it needs no second look later.
      const bool wasMember = std::exchange(process.isUnlistedMember, false);
      process.isFilled = wasMember && fillMember(process, launchAgents);
      if (!wasMember) process.row.drop();
      continue;
    }
    if (!process.row.isHere()) makeRow(process);
    fillRow(process, launchAgents);
    if (process.waits) waiting_.push_back(pid);
    processes.push_back(process.row.lend());
  }
  cache_.end();

  tree_.countAll();
  if (!waiting_.empty()) leaveRolesToChildren(processes, minMemMB);
  for (VordaProcess& process : processes) process.processesBelow = tree_.below(process.pid);
  fillFamilies(processes, launchAgents);
  sortByRoleAndMemory(processes, order_);
}

void RepeatedScan::fillFamilies(std::vector<VordaProcess>& processes,
                                std::span<const VordaLaunchAgent> launchAgents) {
  families_.find();
  listedHeads_.clear();
  listedPids_.clear();
  for (VordaProcess& process : processes) {
    process.family = families_.headOf(process.pid);
    process.leftBehindBy = families_.leftBehindBy(process.pid);
    listedPids_.push_back(process.pid);
    if (process.family) listedHeads_.push_back(*process.family);
  }
  std::ranges::sort(listedPids_);
  std::ranges::sort(listedHeads_);
  findUnlistedMembers(launchAgents);
}

void RepeatedScan::findUnlistedMembers(std::span<const VordaLaunchAgent> launchAgents) {
  wanted_.clear();
  if (!listedHeads_.empty()) {
    families_.forEachMember([this](std::int32_t pid, std::int32_t head) {
      if (std::ranges::binary_search(listedHeads_, head) &&
          !std::ranges::binary_search(listedPids_, pid) && wanted_.size() < kMostUnlistedMembers) {
        wanted_.push_back(pid);
      }
    });
  }
  for (const std::int32_t pid : wanted_) {
    CachedProcess* const process = cache_.find(pid);
    if (process == nullptr) continue;
    if (!std::exchange(process->isFilled, false)) {
      if (!lookAtMember(*process)) continue;
      if (!process->row.isHere()) makeRow(*process);
      fillRow(*process, launchAgents);
    }
    process->isUnlistedMember = true;
    unlisted_.push_back(process->row.lend());
    if (process->waits) takeRole(*process, unlisted_.back());
    unlisted_.back().processesBelow = tree_.below(pid);
    unlisted_.back().family = families_.headOf(pid);
    unlisted_.back().leftBehindBy = families_.leftBehindBy(pid);
  }
}

/// Of the process that is being looked at. False when its row has to be made anew, or it is
/// somebody else's, or gone.
bool RepeatedScan::fillMember(CachedProcess& process,
                              std::span<const VordaLaunchAgent> launchAgents) {
  if (isRead_ || !process.row.isHere() || process.isExcluded || uid() != ownUid_) {
    return false;
  }
  if (!memMB_) memMB_ = footprintMB(process.pid);
  if (!platform::confirmProcess(process.pid, facts_)) return false;
  fillRow(process, launchAgents);
  return true;
}

/// False when it is somebody else's, or gone.
bool RepeatedScan::lookAtMember(CachedProcess& process) {
  if (!platform::lookAtProcess(process.pid, facts_)) return false;
  isRead_ = false;
  const auto fingerprint = facts_.fingerprint;
  if ((!fingerprint || process.fingerprint != fingerprint) && !learn(process)) return false;
  if (process.isExcluded || uid() != ownUid_) return false;
  memMB_ = footprintMB(process.pid);
  if (!isRead_ && !process.row.isHere() && !learn(process)) return false;
  return platform::confirmProcess(process.pid, facts_);
}

/// Finds everything out anew. False when there is nothing to show.
bool RepeatedScan::learn(CachedProcess& process) {
  process.forget();
  if (!platform::readCommandLine(facts_)) return false;
  isRead_ = true;
  process.fingerprint = facts_.fingerprint;
  process.executable =
      facts_.executable ? std::make_unique<platform::Fingerprint>(*facts_.executable) : nullptr;
  process.isExcluded = isExcludedName(facts_.name);
  process.isFamilyBorder = isFamilyBorder(facts_.name, facts_.arguments);
  line_.read(facts_.arguments, facts_.commandLine);
  verdict_ = verdictAs(facts_.name, line_);
  process.role = verdict_.role;
  process.waits = verdict_.waits && verdict_.role != LabRole::none;
  if (process.waits || !verdict_.blob.empty()) {
    process.otherName = std::make_unique<OtherName>(OtherName{{}, std::string(verdict_.blob)});
  }
  process.dependsOnExecutable =
      process.executable &&
      (process.isExcluded || process.role != LabRole::none || !isOrdinaryAnyway(facts_.title));
  return true;
}

/// What the word rules and the recognition together say.
recognition::Verdict RepeatedScan::verdictAs(std::string_view name, const SearchedLine& line) {
  const std::string_view exe = exeOf(name);
  return recognition::verdictOn(exe, line.arguments(), roleOf(exe, line));
}

/// An executable's name as the rules are asked about it, until the next call.
std::string_view RepeatedScan::exeOf(std::string_view name) {
  exe_.clear();
  text::appendLowered(text::lastPathComponent(name), exe_);
  return exe_;
}

/// Whether a title is that of an ordinary process, be it one argument or several.
bool RepeatedScan::isOrdinaryAnyway(std::string_view title) {
  if (title.empty()) return false;  // the executable decides about more than that
  const auto isOrdinary = [this](std::string_view joined) {
    // One of the two has been looked at already: the one that the arguments were read as.
    if (std::ranges::equal(words_, facts_.arguments)) return true;
    const std::string_view name = text::lastPathComponent(words_.front());
    otherLine_.read(words_, joined);
    return !isExcludedName(name) && verdictAs(name, otherLine_).role == LabRole::none;
  };
  words_.assign(1, title);
  if (!isOrdinary(title)) return false;

  words_.clear();
  joinedWords_.clear();
  for (std::size_t begin = 0; begin < title.size();) {
    const std::size_t end = std::min(title.find(' ', begin), title.size());
    if (end > begin) {
      words_.push_back(title.substr(begin, end - begin));
      if (!joinedWords_.empty()) joinedWords_ += ' ';
      joinedWords_ += words_.back();
    }
    begin = end + 1;
  }
  return isOrdinary(joinedWords_);
}

/// Asks the system for what decides, and no more.
bool RepeatedScan::isListed(CachedProcess& process, double minMemMB) {
  const auto hasOtherExecutable = [&process] {
    return process.executable && platform::executableOfProcess() != *process.executable;
  };
  if (!isRead_ && process.dependsOnExecutable && hasOtherExecutable() && !learn(process)) {
    return false;
  }
  if (process.isExcluded) return false;
  if (process.role == LabRole::none && uid() != ownUid_) return false;
  if (!memMB_) memMB_ = footprintMB(process.pid);
  if (process.role == LabRole::none && *memMB_ < minMemMB) return false;
  // A listed process shows its name, and that may depend on the executable even where the role
  // does not: another executable means that its row has to be made anew.
  const bool isNew =
      !process.row.isHere() || (!process.dependsOnExecutable && hasOtherExecutable());
  if (!isRead_ && isNew) return learn(process) && isListed(process, minMemMB);
  return true;
}

void RepeatedScan::makeRow(CachedProcess& process) {
  auto shown = CredentialMask::shown(facts_.arguments, facts_.commandLine);
  std::optional<FriendlyName> name = std::move(verdict_.name);
  if (shown.arguments) {
    // The name is made of what may be shown.
    const auto arguments = recognition::viewsOf(*shown.arguments);
    auto verdict = recognition::verdictOn(exeOf(facts_.name), arguments, verdict_.byRules);
    name = verdict.role == process.role ? std::move(verdict.name) : std::nullopt;
    if (!name) name = friendlyName(*shown.arguments, process.role, {});
  } else if (!name) {
    name = nameOf(line_, process.role, CredentialMask::maskedLine(facts_.name));
  }
  if (process.waits) process.otherName->ofLauncher = launcherName(facts_.arguments);
  process.row.make(
      {.displayName = std::move(name->displayName),
       .product = std::move(name->product),
       .commandLine = stored(shown.commandLine),
       .labRole = process.role,
       .isCommandLineCut = facts_.isCut || shown.commandLine.size() > kLongestStoredLine});
}

/// Ollama's runners are called after their model, as soon as a manifest tells which it is.
void RepeatedScan::nameModel(CachedProcess& process) {
  if (!process.otherName || process.otherName->blob.empty()) return;
  const auto model = ollama_.nameOf(process.otherName->blob, uid());
  if (!model) return;
  process.row->displayName = "Ollama: " + basenameModel(*model);
  process.otherName->blob.clear();
}

/// What may be another at each scan.
void RepeatedScan::fillRow(CachedProcess& process, std::span<const VordaLaunchAgent> launchAgents) {
  nameModel(process);
  VordaProcess& row = *process.row;
  row.pid = process.pid;
  row.memMB = *memMB_;
  setLabels(row.matchedAgents, launchAgents, process.pid, facts_.startTime);
  row.isProtected = uid() != ownUid_;
  row.ownerName = ownerNames_.of(uid());
  row.identity = facts_.identity;
  row.startTime = facts_.startTime;
  if (process.waits) giveRole(process);
  sampleMapped(process.pid, row.memMB, !row.isProtected, process.mappedFiles, row.mapped);
  nameMappedModel(row);
}

/// Takes the role from launchers whose started program has it too, so that only one of the two
/// counts as the workload. A launcher without a role is listed as any other process.
void RepeatedScan::leaveRolesToChildren(std::vector<VordaProcess>& processes, double minMemMB) {
  for (const std::int32_t pid : launchers_.ofOthers(processes, waiting_, tree_)) {
    const auto row = std::ranges::find(processes, pid, &VordaProcess::pid);
    CachedProcess* const process = cache_.find(pid);
    if (row == processes.end() || process == nullptr) continue;
    takeRole(*process, *row);
    if (row->isProtected || row->memMB < minMemMB) {
      process->row.takeBack(std::move(*row));
      processes.erase(row);
    }
  }
}

}  // namespace ProcessScanner
