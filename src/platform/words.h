#pragma once

#include <string_view>

namespace platform {

/// The words in which the platform's own things are spoken of. All tables are data in
/// every build, so that the sentences of every platform are tested on every platform.
struct Words {
  std::string_view system;             ///< who refuses a signal
  std::string_view systemMonitor;      ///< the program whose figures ours match
  std::string_view protectedBy;        ///< why a process may be protected
  std::string_view statusArea;         ///< where the program's icon stands
  std::string_view dockerHelper;       ///< Docker's well-known root process
  std::string_view dockerAlternative;  ///< the second way to stop Docker
  /// Why an MLX server is to be quit rather than killed; "" where that makes no difference.
  std::string_view mlxQuitFirst = {};
};

inline constexpr Words kMacWords{
    "macOS",
    "Activity Monitor",
    "(root, system service, or SIP)",
    "menu bar",
    "This is common for Docker’s network helper (com.docker.vmnetd).",
    "• Open Docker Desktop → Quit Docker Desktop",
    "Quit first: it gives wired memory back",
};

inline constexpr Words kLinuxWords{
    "Linux",
    "System Monitor",
    "(root, system service, or a security policy)",
    "system tray",
    "This is common for Docker’s engine (dockerd).",
    "• Stop the service it belongs to (systemctl stop …)",
};

/// Where nobody has looked for better ones yet.
inline constexpr Words kUnsupportedWords{
    "Unix",
    "System Monitor",
    "(root, system service, or a security policy)",
    "system tray",
    "This is common for Docker’s engine (dockerd).",
    "• Stop the service it belongs to",
};

/// The words of the platform that the program was built for.
const Words& words();

}  // namespace platform
