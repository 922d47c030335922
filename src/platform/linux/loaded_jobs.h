#pragma once

#include <chrono>
#include <span>

#include "platform/launch_agents.h"
#include "platform/linux/user_manager.h"

namespace platform {

/// Finds out which jobs the user's manager holds loaded. Asking never takes more than
/// UserBus::kPatience; a manager that let them pass is left alone for a while, or every refresh
/// would freeze the interface for as long.
class LoadedJobsReader {
 public:
  /// `manager` must outlive it.
  explicit LoadedJobsReader(UserManager& manager,
                            std::chrono::seconds rest = std::chrono::seconds(60))
      : manager_(manager), rest_(rest) {}

  LoadedJobs read(std::span<const JobFile> files);

 private:
  LoadedJobs restAWhile();

  UserManager& manager_;
  std::chrono::seconds rest_;
  Deadline restsUntil_;
};

}  // namespace platform
