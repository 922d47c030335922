#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

/// One launch agent of the user's service manager, as its file says it.
struct LaunchAgentFile {
  std::string label;                          ///< the name that the manager knows it by
  std::string path;                           ///< of the file itself, from the root
  std::vector<std::string> programArguments;  ///< its command word by word; empty when none
  bool keepAlive = false;                     ///< the manager starts it anew when it ends

  bool operator==(const LaunchAgentFile&) const = default;
};

/// Every launch agent file of the user's folder, then of the machine's, until the next call; what
/// can't be read is left out.
std::span<const LaunchAgentFile> launchAgentFiles();

/// Label to pid of every launch agent that the manager holds loaded; no pid: loaded but not
/// running.
using LoadedLaunchAgents = std::map<std::string, std::optional<std::int32_t>, std::less<>>;

/// What the manager said when it was asked last.
struct LaunchAgentAnswer {
  LoadedLaunchAgents loaded;
  /// When it was asked, on processClock(). A process with one of these pids that started later is
  /// not the one that the manager meant.
  std::uint64_t askedAt = 0;
};

/// Which of the launch agents in the given files (perhaps of others too) are loaded, until the next
/// call. Null when the manager can't be asked. Linux: waits for 300 ms at most; when the manager
/// takes longer, its last answer is returned, and for a minute it is not asked again. macOS: the
/// same, with a second of waiting; before the first answer, and after a failure, nothing counts as
/// loaded.
const LaunchAgentAnswer* loadedLaunchAgents(std::span<const LaunchAgentFile> files);

/// How one attempt to start or stop a launch agent ended.
struct ServiceReply {
  int status = 0;         ///< 0: done
  std::string errorText;  ///< the manager's own words if it failed
};

/// One attempt. The first call starts it; each call continues it and returns the reply, or none
/// while it goes on: call again. Linux: never waits; there is no time limit, it ends when the
/// manager is done or the connection is lost. macOS: the first call waits, at most 10 seconds for
/// all attempts together, and returns the reply.
using ServiceAttempt = std::function<std::optional<ServiceReply>()>;

/// The ways to stop (start) one launch agent, in the order in which to try them.
std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string& path);
std::vector<ServiceAttempt> startAttempts(const std::string& label, const std::string& path);

}  // namespace platform
