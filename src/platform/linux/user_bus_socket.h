#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/file_descriptor.h"

namespace platform {

/// The sockets at which the user's message bus may listen, in the order in which to look:
/// $XDG_RUNTIME_DIR/bus, those of $DBUS_SESSION_BUS_ADDRESS, and RUNTIME/UID/bus, which is there
/// without those variables as well (su -, sudo -i, cron). Of folders, only the user's own. A
/// socket that is in no folder begins with a NUL.
std::vector<std::string> userBusSockets(const std::filesystem::path& runtime = "/run/user");

/// A connection to the first of these sockets at which one of the user's own programs listens.
/// Never waits: where nobody takes connections at present, `error` is EAGAIN. None, and `error`
/// says why, where there is no such socket.
[[nodiscard]] FileDescriptor connectToUserBus(const std::vector<std::string>& sockets, int& error);

}  // namespace platform
