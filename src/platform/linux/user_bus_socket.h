#pragma once

#include <string>
#include <vector>

#include "platform/linux/file_reader.h"

namespace platform {

/// The sockets at which the user's message bus may listen, in the order in which to look:
/// $XDG_RUNTIME_DIR/bus, those of $DBUS_SESSION_BUS_ADDRESS, and RUNTIME/UID/bus, which is there
/// without those variables as well (su -, sudo -i, cron). Only sockets in folders that belong to
/// the user. An abstract socket's name begins with a NUL.
std::vector<std::string> userBusSockets(const std::string& runtime = "/run/user");

/// Connects to the first of these sockets at which a program of the user's own listens. Never
/// waits: when it can't take connections at present, `error` is EAGAIN. No descriptor, and the
/// reason in `error`, when there is no such socket.
[[nodiscard]] FileDescriptor connectToUserBus(const std::vector<std::string>& sockets, int& error);

}  // namespace platform
