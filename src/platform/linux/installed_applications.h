#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/desktop_entry.h"

namespace platform {

/// An application as its .desktop file describes it.
struct InstalledApplication {
  std::string id;  ///< "org.kde.dolphin.desktop"; for a file in a subfolder, "sub-name.desktop"
  std::filesystem::path path;
  DesktopEntry entry;
};

/// The folders in which .desktop files are looked for, the user's first.
std::vector<std::filesystem::path> applicationFolders();

/// Every application in these folders and below them: folder by folder, sorted by name in each. Of
/// files with the same id only the first counts; if that one is hidden, the application is left
/// out. Limits: no folder is entered twice, or at a depth of more than 8; at most 20,000 entries
/// and 32 MiB in all folders together, and 256 KiB of a file, are read.
std::vector<InstalledApplication> installedApplications(
    const std::vector<std::filesystem::path>& folders);

}  // namespace platform
