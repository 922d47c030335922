#include "fakes/scripted_platform.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/applications.h"
#include "platform/heap.h"
#include "platform/process_place.h"
#include "platform/processes.h"
#include "platform/signals.h"
#include "platform/users.h"
#include "text/path.h"

namespace {

ScriptedPlatform scripted;
// Of the process that was looked at last.
std::int32_t lastPid = 0;
std::optional<std::uint64_t> lastIdentity;

constexpr double kBytesPerMB = 1048576;

/// Without an allocation: a test counts those of the program.
class TextHash {
 public:
  void add(std::string_view text) {
    hash_ = hash_ * 31 + std::hash<std::string_view>{}(text);
    size_ += text.size();
  }
  std::optional<platform::Fingerprint> fingerprint() const {
    if (size_ == 0) return std::nullopt;
    return platform::Fingerprint{hash_, size_};
  }

 private:
  std::uint64_t hash_ = 0;
  std::uint64_t size_ = 0;
};

std::optional<platform::Fingerprint> fingerprintOf(std::string_view text) {
  TextHash hash;
  hash.add(text);
  return hash.fingerprint();
}

/// Of the arguments, as the system hands them over; the executable has no part in it.
std::optional<platform::Fingerprint> fingerprintOf(const ScriptedProcess& process) {
  if (process.noFingerprint) return std::nullopt;
  TextHash hash;
  hash.add(process.title);
  if (process.isCut) hash.add("...");
  for (const auto& argument : process.arguments) {
    if (!process.title.empty()) continue;
    hash.add(argument);
    hash.add(std::string_view("\0", 1));
  }
  return hash.fingerprint();
}

std::vector<platform::ServiceAttempt> attempts(const char* verb, const std::string& label,
                                               const std::vector<platform::ServiceReply>& replies) {
  std::vector<platform::ServiceAttempt> result;
  for (std::size_t i = 0; i < replies.size(); ++i) {
    result.emplace_back([call = std::string(verb) + " " + label + " " + std::to_string(i + 1),
                         reply = replies[i], began = false]() mutable {
      if (!std::exchange(began, true)) {
        scripted.serviceCalls.push_back(call);
        if (scripted.nextCallFails()) reply = {scripted.fault->error, "no"};
      }
      return scripted.attemptsGoOn ? std::nullopt : std::optional(reply);
    });
  }
  return result;
}

}  // namespace

ScriptedPlatform& machine() {
  return scripted;
}

void resetMachine() {
  scripted = {};
}

ScriptedProcess* ScriptedPlatform::find(std::int32_t pid) {
  const auto found = std::ranges::find(processes, pid, &ScriptedProcess::pid);
  return found == processes.end() ? nullptr : &*found;
}

bool ScriptedPlatform::nextCallFails() {
  ++calls;
  return fault && (calls == fault->call || (fault->andAllLater && calls > fault->call));
}

namespace platform {

std::optional<std::vector<ModelManifest>> readModelManifests(const std::string& modelFolder,
                                                             std::uint32_t owner) {
  scripted.manifestsRead.emplace_back(modelFolder, owner);
  if (scripted.nextCallFails() || scripted.manifestsHang) return std::nullopt;
  const auto found = scripted.modelManifests.find(modelFolder);
  return found == scripted.modelManifests.end() ? std::vector<ModelManifest>() : found->second;
}

GpuReading readGpus(const GpuQuestion& question) {
  scripted.gpusAreWatched = question.isWatched;
  scripted.pidsOnGpus.assign(question.pids.begin(), question.pids.end());
  return scripted.nextCallFails() ? GpuReading() : scripted.gpus;
}

void returnFreeMemory() {
  ++scripted.timesFreeMemoryReturned;
}

void awaitGpus() {
  ++scripted.gpusAwaited;
}

std::span<const std::int32_t> allPids() {
  ++scripted.pidListings;
  if (scripted.nextCallFails()) return {};
  static std::vector<std::int32_t> pids;
  pids.clear();
  for (const auto& process : scripted.processes) pids.push_back(process.pid);
  return pids;
}

bool lookAtProcess(std::int32_t pid, ProcessFacts& facts) {
  const ScriptedProcess* process = scripted.find(pid);
  if (scripted.nextCallFails() || process == nullptr || process->unreadable) return false;
  lastPid = pid;
  lastIdentity = process->identity;
  facts.effectiveUid = process->effectiveUid;
  facts.parent = process->parent;
  facts.session = process->session;
  facts.startTime = process->startTime;
  facts.fingerprint = fingerprintOf(*process);
  facts.identity.reset();
  return true;
}

bool readCommandLine(ProcessFacts& facts) {
  const ScriptedProcess* process = scripted.find(lastPid);
  if (scripted.nextCallFails() || process == nullptr) return false;
  ++scripted.commandLinesRead;

  facts.commandLine.clear();
  for (const auto& argument : process->arguments) {
    if (&argument != process->arguments.data()) facts.commandLine += ' ';
    facts.commandLine += argument;
  }
  facts.arguments.clear();
  std::size_t start = 0;
  for (const auto& argument : process->arguments) {
    facts.arguments.push_back(std::string_view(facts.commandLine).substr(start, argument.size()));
    start += argument.size() + 1;
  }
  facts.name = !process->name.empty() || process->arguments.empty()
                   ? process->name
                   : std::string(text::lastPathComponent(process->arguments.front()));
  facts.isCut = process->isCut;
  facts.executable = fingerprintOf(process->executable);
  facts.title = process->title;
  return !facts.name.empty();
}

std::optional<Fingerprint> executableOfProcess() {
  const ScriptedProcess* process = scripted.find(lastPid);
  if (scripted.nextCallFails() || process == nullptr) return std::nullopt;
  scripted.executablesAsked.push_back(lastPid);
  return fingerprintOf(process->executable);
}

std::optional<std::uint64_t> physicalFootprint(std::int32_t pid) {
  scripted.footprintsRead.push_back(pid);
  if (scripted.nextCallFails()) return std::nullopt;
  const ScriptedProcess* process = scripted.find(pid);
  if (process == nullptr || !process->footprintMB) return std::nullopt;
  return static_cast<std::uint64_t>(*process->footprintMB * kBytesPerMB);
}

std::optional<SharedMemory> sharedMemory(std::int32_t pid) {
  const ScriptedProcess* process = scripted.find(pid);
  if (process == nullptr) return std::nullopt;
  const SharedMemory memory{static_cast<std::uint64_t>(process->fileMB * kBytesPerMB),
                            static_cast<std::uint64_t>(process->sharedMB * kBytesPerMB)};
  const bool isMuch =
      memory.fileBytes >= kLeastSharedBytes || memory.sharedBytes >= kLeastSharedBytes;
  return isMuch ? std::optional(memory) : std::nullopt;
}

std::vector<MappedFile> mappedFiles(std::int32_t pid, std::size_t) {
  ++scripted.mapsRead;
  return scripted.find(pid)->mappedFiles;
}

namespace {

class ScriptedFairShares : public FairShareQuestion {
 public:
  explicit ScriptedFairShares(std::vector<std::int32_t> pids) : pids_(std::move(pids)) {}
  std::optional<FairShares> answer() const override {
    if (scripted.fairSharesTakeTime) return std::nullopt;
    FairShares shares;
    for (const std::int32_t pid : pids_) {
      const ScriptedProcess* process = scripted.find(pid);
      const bool isKnown = process != nullptr && process->fairMB;
      shares.push_back(
          isKnown ? std::optional(static_cast<std::uint64_t>(*process->fairMB * kBytesPerMB))
                  : std::nullopt);
    }
    return shares;
  }

 private:
  std::vector<std::int32_t> pids_;
};

}  // namespace

std::shared_ptr<const FairShareQuestion> askFairShares(const std::vector<std::int32_t>& pids) {
  ++scripted.fairSharesAsked;
  return std::make_shared<ScriptedFairShares>(pids);
}

bool confirmProcess(std::int32_t pid, ProcessFacts& facts) {
  if (scripted.beforeConfirm) scripted.beforeConfirm(pid);
  if (scripted.nextCallFails()) return true;  // it can't be told
  const ScriptedProcess* process = scripted.find(pid);
  if (process == nullptr || process->identity != lastIdentity) return false;
  facts.identity = process->identity;
  return true;
}

std::optional<std::uint64_t> processIdentity(std::int32_t pid) {
  if (scripted.nextCallFails()) return std::nullopt;
  const ScriptedProcess* process = scripted.find(pid);
  return process == nullptr ? std::nullopt : process->identity;
}

std::optional<ProcessState> processState(std::int32_t pid) {
  if (scripted.nextCallFails()) return std::nullopt;
  const ScriptedProcess* process = scripted.find(pid);
  return process == nullptr ? std::nullopt : std::optional(process->state);
}

std::string placeOfProcess(std::int32_t pid) {
  const ScriptedProcess* const process = scripted.find(pid);
  if (scripted.nextCallFails() || process == nullptr) return {};
  return process->place;
}

std::optional<std::string> workingFolderOfProcess(std::int32_t pid) {
  ++scripted.foldersRead;
  const ScriptedProcess* const process = scripted.find(pid);
  if (scripted.nextCallFails() || process == nullptr) return std::nullopt;
  return process->folder;
}

std::uint64_t processClock() {
  return scripted.clock;
}

std::int32_t ownPid() {
  return scripted.ownPid;
}

std::uint32_t ownUid() {
  return scripted.ownUid;
}

std::optional<std::string> loginName(std::uint32_t uid) {
  ++scripted.loginNameLookups;
  if (scripted.nextCallFails()) return std::nullopt;
  const auto found = scripted.loginNames.find(uid);
  if (found == scripted.loginNames.end()) return std::nullopt;
  return found->second;
}

MemoryReading readMemory() {
  if (scripted.nextCallFails()) return {};
  return scripted.memory;
}

std::span<const LaunchAgentFile> launchAgentFiles() {
  ++scripted.launchAgentFileListings;
  if (scripted.nextCallFails()) return {};
  return scripted.launchAgentFiles;
}

const LaunchAgentAnswer* loadedLaunchAgents(std::span<const LaunchAgentFile>) {
  if (scripted.nextCallFails() || !scripted.managerAnswers) return nullptr;
  static LaunchAgentAnswer answer;
  if (answer.loaded != scripted.loadedLaunchAgents) answer.loaded = scripted.loadedLaunchAgents;
  answer.askedAt = scripted.loadedAskedAt;
  return &answer;
}

std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string&) {
  return attempts("stop", label, scripted.stopReplies);
}

std::vector<ServiceAttempt> startAttempts(const std::string& label, const std::string&) {
  return attempts("start", label, scripted.startReplies);
}

SignalTarget::SignalTarget(std::int32_t pid) : pid_(pid), handle_(-1) {
  if (scripted.beforeSignal) scripted.beforeSignal(pid);
}

SignalTarget::~SignalTarget() = default;

std::optional<std::uint32_t> SignalTarget::effectiveUid() const {
  if (scripted.nextCallFails()) return std::nullopt;
  const ScriptedProcess* process = scripted.find(pid_);
  const auto owner = process == nullptr ? std::nullopt : process->effectiveUid;
  if (scripted.afterOwner) scripted.afterOwner(pid_);
  return owner;
}

std::optional<std::uint64_t> SignalTarget::identity() const {
  return processIdentity(pid_);
}

int SignalTarget::send(Signal signal) const {
  if (pid_ < 1) return EINVAL;
  if (scripted.nextCallFails()) return scripted.fault->error;
  ScriptedProcess* process = scripted.find(pid_);
  if (process == nullptr) return ESRCH;
  if (process->signalError != 0) return process->signalError;
  scripted.signals.push_back({pid_, signal == Signal::forceQuit});
  if (signal == Signal::quit && process->ignoresQuit) return 0;
  std::erase_if(scripted.processes, [this](const auto& one) { return one.pid == pid_; });
  return 0;
}

void openSystemMonitor() {
  ++scripted.systemMonitorOpened;
}

void openDockerDesktop() {
  ++scripted.dockerDesktopOpened;
}

const Words& words() {
  return scripted.words;
}

}  // namespace platform
