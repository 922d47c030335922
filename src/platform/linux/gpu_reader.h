#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/gpus.h"
#include "platform/linux/drm_cards.h"
#include "platform/linux/drm_process_memory.h"
#include "platform/linux/file_tree.h"
#include "platform/linux/gpu_helper.h"
#include "platform/linux/procfs.h"

namespace platform {

/// What platform/gpus.h promises, from one /sys, one /proc and one vorda-gpu. For one thread.
class GpuReader {
 public:
  using Clock = std::chrono::steady_clock;

  struct Options {
    GpuHelper::Options helper;
    DrmProcessMemory::Options clients;
    /// findNvidiaLibrary(); asked again after a minute where it finds none.
    std::function<std::string()> library;
    std::function<Clock::time_point()> now = Clock::now;
    std::chrono::seconds interval{10};        ///< between two questions
    std::chrono::seconds watchedInterval{5};  ///< the same while somebody looks
    /// How long NVIDIA's last answer counts when no other follows. While a card of theirs sleeps,
    /// it counts on: then nobody asks.
    std::chrono::seconds longestStanding{300};
    /// Whether the pids that drivers tell are those that processes have here: in a container they
    /// are not, and what drivers tell of processes is ignored.
    bool pidsAreTheDrivers = true;
  };
  GpuReader(const FileTree& sys, const ProcFs& proc, Options options);

  GpuReading read(const GpuQuestion& question);
  void await();

 private:
  /// The time of the last question, and whether there may be another.
  class Pace {
   public:
    bool allows(Clock::time_point now, std::chrono::seconds interval);

   private:
    std::optional<Clock::time_point> last_;
  };

  const std::string& library(Clock::time_point now);
  void askDriver(Clock::time_point now);
  void hearDriver(Clock::time_point now);
  void askKernel();
  GpuReading reading() const;

  const FileTree& sys_;
  Options options_;

  // NVIDIA's, as the driver said.
  GpuHelper helper_;
  std::string library_;
  std::optional<Clock::time_point> lookedForLibrary_;
  Pace driverPace_;
  GpuReading nvidia_;
  Clock::time_point heard_;  ///< when it said so

  // All others, as the kernel said.
  Pace kernelPace_;
  Pace clientsPace_;
  std::vector<DrmCard> cards_;
  DrmProcessMemory clients_;
  /// What kfd told of one process.
  struct KfdUse {
    std::int32_t pid = 0;
    std::string card;  ///< DrmCard::id
    std::uint64_t bytes = 0;
    std::uint64_t askedAt = 0;
  };
  std::vector<KfdUse> kfd_;
};

/// Whom readGpus and awaitGpus ask from now on; nullptr: the machine's own reader. A bench puts one
/// over folders of its own in its place.
void replaceGpuReader(GpuReader* reader);

/// Whether this process is in the machine's first pid namespace.
bool isInFirstPidNamespace();

}  // namespace platform
