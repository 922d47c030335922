#pragma once

#include <sys/stat.h>

#include <ctime>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/launch_agents.h"

namespace platform {

// platform::launchAgentFiles() joins the user's own folder and the machine's.

/// The launch agent files of one folder, by name: each NAME.service that is a regular file.
/// Templates (NAME@.service) are left out. A masked one (a link to /dev/null) has no command.
/// Limits: the first 10,000 entries in the folder's own order; of these the first 1,000 services
/// by name; 8 MiB in all, and 64 KiB of a file.
std::vector<LaunchAgentFile> launchAgentFilesIn(const std::filesystem::path& folder);

/// Where the user's own unit files are: $XDG_CONFIG_HOME/systemd/user, else
/// ~/.config/systemd/user; empty when there is no home.
std::filesystem::path userUnitFolder();

/// The launch agent files of one folder, read again only when the folder or one of them has
/// changed.
class LaunchAgentFolder {
 public:
  /// The time in seconds, on the clock of the file systems.
  using Clock = std::time_t (*)();
  explicit LaunchAgentFolder(
      std::filesystem::path folder, Clock now = [] { return std::time(nullptr); })
      : path_(std::move(folder)), now_(now) {}

  /// Looks whether something has changed, and allocates nothing when nothing has. Returns whether
  /// files() may be different now.
  bool update();
  /// What launchAgentFilesIn told at the last update.
  const std::vector<LaunchAgentFile>& files() const { return files_; }

 private:
  /// Changes when a file or folder does; none for one that is not there.
  using Stamp = std::optional<struct stat>;
  struct Entry {
    std::string path;
    Stamp stamp;
  };

  static Stamp stampOf(const char* path);
  static bool isSame(const Stamp& a, const Stamp& b);
  bool isAsItWas() const;

  std::filesystem::path path_;
  Clock now_;
  bool isSettled_ = false;  ///< any later change would show in a stamp
  Stamp stamp_;             ///< of the folder
  std::vector<Entry> entries_;
  std::vector<LaunchAgentFile> files_;
};

/// platform::launchAgentFiles().
class UserUnitFiles {
 public:
  /// `machine`: the folder in the place of the machine's.
  explicit UserUnitFiles(std::filesystem::path machine = "/etc/systemd/user")
      : machine_(std::move(machine)) {}
  std::span<const LaunchAgentFile> read();

 private:
  std::string config_;  ///< the variables that say where the user's folder is
  std::string home_;
  LaunchAgentFolder user_{userUnitFolder()};
  LaunchAgentFolder machine_;
  std::vector<LaunchAgentFile> all_;
};

}  // namespace platform
