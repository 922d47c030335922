#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What a .service file says of its service.
struct ServiceUnit {
  std::vector<std::string> command;  ///< the words of the first ExecStart=; empty when none
  bool keepAlive = false;            ///< Restart= is given, and not "no"
};

/// Reads a unit file as systemd does: comments, continued lines, later values of Restart=
/// replacing earlier ones, an empty ExecStart= discarding those before it. Lines that are not
/// UTF-8 or not valid are skipped.
ServiceUnit serviceUnit(std::string_view bytes);

}  // namespace platform
