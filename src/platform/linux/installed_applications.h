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

/// Every application in these folders and what is below them: folder after folder, by name in
/// each. Of files with the same id the first counts alone; when that one is hidden, none.
/// No folder is entered twice, none more than 8 below the first. Of more than 20,000 entries in
/// all folders together the rest is not looked at, nor what is behind 32 MiB; of a file, 256 KiB
/// are.
std::vector<InstalledApplication> installedApplications(
    const std::vector<std::filesystem::path>& folders);

}  // namespace platform
