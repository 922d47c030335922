#include "platform/launch_agents.h"

#include <iterator>

#include "platform/linux/job_control.h"
#include "platform/linux/job_files.h"
#include "platform/linux/loaded_jobs.h"

namespace platform {
namespace {

constexpr std::chrono::seconds kJobLimit{10};

UserManager& manager() {
  static UserManager manager;
  return manager;
}

}  // namespace

std::vector<JobFile> jobFiles() {
  std::vector<JobFile> files = jobFilesIn(userUnitFolder());
  auto machine = jobFilesIn("/etc/systemd/user");
  std::move(machine.begin(), machine.end(), std::back_inserter(files));
  return files;
}

LoadedJobs loadedJobs(std::span<const JobFile> files) {
  static LoadedJobsReader reader(manager());
  return reader.read(files);
}

std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string&) {
  return {[label] { return stopJob(manager(), label, kJobLimit); }};
}

std::vector<ServiceAttempt> startAttempts(const std::string& label, const std::string&) {
  return {[label] { return startJob(manager(), label, kJobLimit); }};
}

}  // namespace platform
