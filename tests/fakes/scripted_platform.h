#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/gpus.h"
#include "platform/launch_agents.h"
#include "platform/mapped_memory.h"
#include "platform/memory.h"
#include "platform/model_manifests.h"
#include "platform/processes.h"
#include "platform/words.h"

/// A process, with what the machine says about it.
struct ScriptedProcess {
  std::int32_t pid = 0;
  std::vector<std::string> arguments;
  std::string name;  ///< "" : last path component of arguments[0]
  std::optional<std::uint32_t> effectiveUid = 1000;
  std::optional<double> footprintMB = 100;
  std::optional<std::uint64_t> identity = 1;
  std::optional<std::int32_t> parent;
  std::optional<std::int32_t> session;
  std::optional<std::uint64_t> startTime = 1;
  bool isCut = false;  ///< it has more arguments than these
  /// Where the executable has a say in what the arguments are.
  std::string executable;
  /// Where it only says whether these words are one argument or several.
  std::string title;
  std::string place;                  ///< platform::placeOfProcess
  std::optional<std::string> folder;  ///< platform::workingFolderOfProcess
  bool noFingerprint = false;
  bool unreadable = false;  ///< listed, but gone when it is read
  double fileMB = 0;        ///< of mapped files, in memory
  double sharedMB = 0;      ///< of shared memory
  std::vector<platform::MappedFile> mappedFiles;
  std::optional<double> fairMB;  ///< its fair share of all memory
  int signalError = 0;           ///< what sending a signal answers; 0 ends the process
  platform::ProcessState state = platform::ProcessState::runs;
  bool ignoresQuit = false;  ///< only a forced quit ends it
};

struct ScriptedSignal {
  std::int32_t pid = 0;
  bool force = false;
  bool operator==(const ScriptedSignal&) const = default;
};

/// A whole machine as a value. It implements every function of platform/*.h for the tests that
/// link it, and remembers what it was asked to do.
struct ScriptedPlatform {
  std::int32_t ownPid = 4242;
  std::uint32_t ownUid = 1000;
  std::map<std::uint32_t, std::string> loginNames{{0, "root"}, {1000, "ada"}, {1001, "grace"}};
  std::vector<ScriptedProcess> processes;  ///< in the order in which they are listed

  platform::MemoryReading memory{16 * 1073741824.0,
                                 platform::MemoryInUse{8 * 1073741824.0, 4 * 1073741824.0}};

  platform::GpuReading gpus;

  std::vector<platform::LaunchAgentFile> launchAgentFiles;
  platform::LoadedLaunchAgents loadedLaunchAgents;
  std::uint64_t loadedAskedAt = 1'000'000'000;  ///< platform::LaunchAgentAnswer::askedAt
  bool managerAnswers = true;                   ///< it can be asked which launch agents are loaded
  /// What the attempts to stop and to start a launch agent answer, in their order.
  std::vector<platform::ServiceReply> stopReplies{{0, ""}};
  std::vector<platform::ServiceReply> startReplies{{0, ""}};
  bool attemptsGoOn = false;  ///< while true, no attempt ends

  platform::Words words = platform::kLinuxWords;
  std::uint64_t clock = 1'000'000'000;  ///< in nanoseconds

  /// One call of the platform that fails: the one with that number (the first is 1), or all
  /// from there on. It answers as if nothing could be read; a signal that is sent answers
  /// `error`, and so does an attempt to start or stop a launch agent.
  struct Fault {
    int call = 0;
    bool andAllLater = false;
    int error = 0;
  };
  std::optional<Fault> fault;
  int calls = 0;  ///< so far

  /// Called when a process is about to be held for a signal, so that a test can change the
  /// machine.
  std::function<void(std::int32_t pid)> beforeSignal;

  /// Called when the owner of a process that is held for a signal has been read.
  std::function<void(std::int32_t pid)> afterOwner;

  /// Called when everything about a process has been read, before confirmProcess.
  std::function<void(std::int32_t pid)> beforeConfirm;

  /// By model folder.
  std::map<std::string, std::vector<platform::ModelManifest>> modelManifests;
  bool fairSharesTakeTime = false;  ///< while true, they are not known yet
  bool manifestsHang = false;       ///< their file system does not answer

  // What the program did.
  std::vector<std::pair<std::string, std::uint32_t>> manifestsRead;  ///< folder and owner
  std::vector<ScriptedSignal> signals;
  std::vector<std::string> serviceCalls;  ///< "stop LABEL 1", "start LABEL 2", …
  int launchAgentFileListings = 0;
  bool gpusAreWatched = false;           ///< the last question about them
  std::vector<std::int32_t> pidsOnGpus;  ///< whom the last question about them was about
  int gpusAwaited = 0;
  int timesFreeMemoryReturned = 0;
  int foldersRead = 0;
  int pidListings = 0;
  int mapsRead = 0;
  int fairSharesAsked = 0;
  int commandLinesRead = 0;
  std::vector<std::int32_t> executablesAsked;  ///< but for those asked with a command line
  std::vector<std::int32_t> footprintsRead;
  int loginNameLookups = 0;
  int systemMonitorOpened = 0;
  int dockerDesktopOpened = 0;

  ScriptedProcess* find(std::int32_t pid);
  /// Counts one call; true if it has to fail.
  bool nextCallFails();
};

/// The machine that the running test uses.
ScriptedPlatform& machine();

/// Replaces it by a fresh machine. To be called first in each test.
void resetMachine();
