#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/linux/file_reader.h"
#include "platform/linux/memory_groups.h"
#include "platform/linux/procfs.h"
#include "platform/memory.h"

namespace platform {

/// Finds the memory limit of the container that this program runs in, and reads it.
///
/// Only a limit that holds every process that can be listed counts: one that holds this program's
/// own unit alone says nothing of the memory that the others can have. Which one that is, is looked
/// up every 30 seconds; where there is none that is all it costs.
class MemoryLimitReader {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr double kLeastBytes = 512 << 20;  ///< a smaller limit counts as none
  static constexpr std::chrono::seconds kLookUpEvery{30};

  /// `proc` outlives it. Before each mount point stands `prefix`: "" but in tests.
  explicit MemoryLimitReader(const ProcFs& proc, std::string prefix = {})
      : proc_(proc), prefix_(std::move(prefix)) {}

  /// The smallest such limit, and what is used of it. Empty when it is below kLeastBytes, or not
  /// below `installedBytes`.
  std::optional<MemoryLimit> read(double installedBytes, Clock::time_point now = Clock::now());

 private:
  /// A cgroup with a limit.
  struct Limited {
    std::string folder;
    int version = 2;
    double limitBytes = 0;
  };

  std::optional<Limited> lookUp(double installedBytes);
  std::optional<Limited> smallest(const MemoryHierarchy& hierarchy, std::string_view ownGroup,
                                  double installedBytes);
  bool holdsEverybody(std::string_view group, int version);
  bool isOutside(std::int32_t pid, std::string_view group, int version);
  static std::optional<MemoryLimit> usageOf(const Limited& limited);

  const ProcFs& proc_;
  std::string prefix_;
  FileReader reader_{64 << 10};
  std::optional<Limited> limited_;
  std::optional<Clock::time_point> lookedUpAt_;
};

}  // namespace platform
