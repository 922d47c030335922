#include "platform/linux/loaded_jobs.h"

#include <cerrno>
#include <filesystem>
#include <string>

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

/// The unit that a job file stands for: its own, or, for a link to another unit's file, that
/// one. The manager lists an alias under the name of the unit only.
template <typename Services>
auto serviceOf(const JobFile& file, const Services& services) {
  const auto own = services.find(file.label + ".service");
  if (own != services.end()) return own;
  std::error_code error;
  if (!std::filesystem::is_symlink(file.path, error)) return own;
  return services.find(std::filesystem::canonical(file.path, error).filename().string());
}

}  // namespace

LoadedJobs LoadedJobsReader::restAWhile() {
  restsUntil_ = Clock::now() + rest_;
  return {};
}

LoadedJobs LoadedJobsReader::read(std::span<const JobFile> files) {
  if (files.empty() || Clock::now() < restsUntil_) return {};
  const Deadline deadline = Clock::now() + UserBus::kPatience;
  BusFailure failure;
  const auto services = manager_.loadedServices(deadline, failure);
  if (!services) return failure.number == ETIMEDOUT ? restAWhile() : LoadedJobs();

  LoadedJobs jobs;
  for (const auto& file : files) {
    const auto service = serviceOf(file, *services);
    if (service == services->end() || jobs.contains(file.label)) continue;
    failure = {};
    const auto pid = manager_.mainPid(service->second, deadline, failure);
    if (failure.number == ETIMEDOUT) return restAWhile();
    auto& job = jobs[file.label];
    if (pid && *pid != 0) job = static_cast<std::int32_t>(*pid);
  }
  return jobs;
}

}  // namespace platform
