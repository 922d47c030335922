#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

/// One job description of the user's service manager, as its file says it.
struct JobFile {
  std::string label;                          ///< the name that the manager knows it by
  std::string path;                           ///< of the file itself, from the root
  std::vector<std::string> programArguments;  ///< its command word by word; empty when none
  bool keepAlive = false;                     ///< the manager starts it anew when it ends
};

/// Every job file of the user's folder, then of the machine's; what can't be read is left out.
std::vector<JobFile> jobFiles();

/// Label to pid of every job that the manager holds loaded; no pid: loaded but not running.
using LoadedJobs = std::map<std::string, std::optional<std::int32_t>, std::less<>>;

/// Asks the manager which jobs are loaded; it is enough to answer for the given files.
/// Empty when there is no manager, or when it does not answer within 2 seconds.
LoadedJobs loadedJobs(std::span<const JobFile> files);

/// How one attempt to start or stop a job ended.
struct ServiceReply {
  int status = 0;         ///< 0: done
  std::string errorText;  ///< the manager's own words when not
};
using ServiceAttempt = std::function<ServiceReply()>;

/// The ways to stop (start) one job, in the order in which to try them. Running one
/// blocks until the manager has finished, for at most 10 seconds.
std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string& path);
std::vector<ServiceAttempt> startAttempts(const std::string& label, const std::string& path);

}  // namespace platform
