#pragma once

#include <filesystem>
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

}  // namespace platform
