#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "platform/gpus.h"
#include "platform/linux/drm_cards.h"
#include "platform/linux/procfs.h"

namespace platform {

/// Finds out what processes hold of graphics cards, from the descriptors that they have open on
/// them. Only the user's own processes show theirs. No file is opened but in fdinfo, and only for
/// descriptors that are a card's.
class DrmProcessMemory {
 public:
  struct Options {
    /// Which character device the entry `name` of the folder /proc/PID/fd stands for; none when it
    /// is something else.
    std::function<std::optional<DrmCard::Node>(int folder, const char* name)> deviceOf =
        deviceOfDescriptor;
    std::size_t mostDescriptors = 8192;            ///< looked at in one call
    std::size_t mostDescriptorsOfAProcess = 4096;  ///< of one with more the rest is passed over
  };
  explicit DrmProcessMemory(const ProcFs& proc);
  DrmProcessMemory(const ProcFs& proc, Options options);

  /// Looks at these processes, first at those whose last look is longest ago, and forgets all
  /// others. Where they have more descriptors together than may be looked at, what was found last
  /// still counts for the rest. Leaves out cards that sleep, and those that turned out to have no
  /// memory of their own.
  void look(const std::vector<DrmCard>& cards, std::span<const std::int32_t> pids);
  /// The same, but looks at no process that was looked at before.
  void lookAtNew(const std::vector<DrmCard>& cards, std::span<const std::int32_t> pids);

  /// What was found. GpuUse::device is the place in `cards`. A client that several processes
  /// share counts for the first of them.
  std::vector<GpuUse> uses(const std::vector<DrmCard>& cards) const;

 private:
  struct Client {
    std::string card;  ///< DrmCard::id
    std::optional<std::uint64_t> id;
    std::uint64_t bytes = 0;
    std::uint64_t askedAt = 0;  ///< on processClock()
  };
  struct Process {
    std::int32_t pid = 0;
    std::uint64_t askedAt = 0;  ///< on processClock(); 0: never
    std::vector<Client> clients;
  };

  static std::optional<DrmCard::Node> deviceOfDescriptor(int folder, const char* name);
  bool isWanted(const DrmCard& card) const;
  void look(const std::vector<DrmCard>& cards, std::span<const std::int32_t> pids,
            bool (*isDue)(const Process&));
  std::size_t lookAt(Process& process, const std::vector<DrmCard>& cards);

  const ProcFs& proc_;
  Options options_;
  FileReader reader_{16 << 10};
  std::vector<Process> processes_;
  std::set<std::string> withoutMemory_;  ///< DrmCard::id
};

}  // namespace platform
