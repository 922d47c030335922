#include "platform/launch_agents.h"

#include <iterator>
#include <memory>

#include "platform/linux/job_files.h"
#include "platform/linux/loaded_jobs.h"
#include "platform/linux/service_job.h"

namespace platform {
namespace {

std::vector<ServiceAttempt> onlyAttempt(ServiceJob::Verb verb, const std::string& label) {
  return {[job = std::make_shared<ServiceJob>(verb, label)] { return job->poll(); }};
}

}  // namespace

std::vector<JobFile> jobFiles() {
  std::vector<JobFile> files = jobFilesIn(userUnitFolder());
  auto machine = jobFilesIn("/etc/systemd/user");
  std::move(machine.begin(), machine.end(), std::back_inserter(files));
  return files;
}

std::optional<JobAnswer> loadedJobs(std::span<const JobFile> files) {
  static LoadedJobsReader reader;
  return reader.read(files);
}

std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string&) {
  return onlyAttempt(ServiceJob::Verb::stop, label);
}

std::vector<ServiceAttempt> startAttempts(const std::string& label, const std::string&) {
  return onlyAttempt(ServiceJob::Verb::start, label);
}

}  // namespace platform
