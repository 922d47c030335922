#pragma once

#include <mach/mach.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "macos/argument_block_bytes.h"

/// A Darwin kernel as a script: it answers the system calls of the edition under test and
/// remembers which signals were sent.
namespace darwin {

constexpr std::uint32_t kUser = 501;

struct Process {
  std::int32_t pid = 0;
  std::uint32_t effectiveUid = kUser;
  std::uint64_t startTime = 1'700'000'000'000'001;  ///< in microseconds since 1970
  std::string path;                                 ///< "": proc_pidpath fails
  std::string argumentBlock;  ///< "": the kernel knows its size, and refuses it
  std::optional<std::uint64_t> footprint = 100 << 20;  ///< none: proc_pid_rusage fails
  std::optional<std::uint64_t> resident;               ///< none: PROC_PIDTASKINFO fails
  char state = 2;                                      ///< SRUN
  bool ignoresTerm = false;
  int killError = 0;  ///< 0: a signal ends the process
};

struct SentSignal {
  std::int32_t pid = 0;
  int number = 0;
  bool operator==(const SentSignal&) const = default;
};

struct Kernel {
  std::int32_t ownPid = 4242;
  std::uint32_t ownUid = kUser;
  std::map<std::uint32_t, std::string> loginNames{{0, "root"}, {kUser, "ada"}, {502, "grace"}};
  std::vector<Process> processes;  ///< as proc_listpids lists them

  std::vector<std::int32_t> listedPids;  ///< listed beside them: 0, what has ended, …
  bool refusesListing = false;
  bool refusesRecords = false;  ///< KERN_PROC_PID fails
  /// Runs between the two questions for an argument block.
  std::function<void(Process&)> whenBlockWasMeasured;

  std::uint64_t installedBytes = 16ULL << 30;
  vm_statistics64_data_t pages = {};
  std::optional<kern_return_t> memoryFailure;
  std::uint32_t memoryWordsAsked = 0;

  std::vector<SentSignal> signals;

  Process* find(std::int32_t pid);
};

/// The kernel that the running test's edition talks to.
Kernel& kernel();
void resetKernel();

/// A process of the user's own with these arguments, the first its path too.
Process process(std::int32_t pid, const std::vector<std::string>& arguments,
                std::uint64_t footprintMB = 100);

}  // namespace darwin
