#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What a .desktop file says of an application. Texts are in the file's main language.
struct DesktopEntry {
  std::string name;
  std::string icon;
  std::string exec;     ///< the command, as written
  std::string tryExec;  ///< a program that must be installed; "" for none
  std::string folder;   ///< where to start it; "" for anywhere
  std::vector<std::string> categories;
  std::vector<std::string> onlyShowIn;
  std::vector<std::string> notShowIn;
  bool isHidden = false;  ///< to be treated as not installed
  bool isListed = true;   ///< to be shown among the applications
  bool needsTerminal = false;
};

/// Reads a .desktop file; none when it describes no application.
std::optional<DesktopEntry> desktopEntry(std::string_view bytes);

/// The command line that starts the application of `entry`, read from the file `path`, without a
/// document: quotes removed, field codes replaced or dropped. None when there is no command, or a
/// quote is not closed.
std::optional<std::vector<std::string>> commandOf(const DesktopEntry& entry, std::string_view path);

}  // namespace platform
