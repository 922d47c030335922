#include "platform/linux/user_bus_socket.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "platform/users.h"
#include "text/split.h"

namespace platform {
namespace {

/// Without an allocation where there is none: on a machine without one it is looked for at each
/// refresh.
void addBusOf(const char* folder, std::vector<std::string>& sockets) {
  struct stat status = {};
  if (*folder != '/' || stat(folder, &status) != 0) return;
  if (!S_ISDIR(status.st_mode) || status.st_uid != ownUid()) return;
  std::array<char, PATH_MAX> socket{};
  const int length = std::snprintf(socket.data(), socket.size(), "%s%s", folder,
                                   std::string_view(folder).ends_with('/') ? "bus" : "/bus");
  if (length < 0 || static_cast<std::size_t>(length) >= socket.size()) return;
  if (stat(socket.data(), &status) == 0) sockets.emplace_back(socket.data());
}

/// In a D-Bus address, %HH stands for a byte. None where that is broken.
std::optional<std::string> percentUnescaped(std::string_view value) {
  constexpr std::size_t kDigits = 2;
  constexpr int kBase = 16;
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    text += value[i];
    if (value[i] != '%') continue;
    const std::string_view digits = value.substr(i + 1, kDigits);
    unsigned char byte = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), byte, kBase);
    if (digits.size() < kDigits || read.ptr != digits.data() + digits.size()) return std::nullopt;
    text.back() = static_cast<char>(byte);
    i += kDigits;
  }
  return text;
}

/// "unix:path=/run/user/1000/bus,guid=…;unix:abstract=…"
void addSocketsOf(std::string_view addresses, std::vector<std::string>& sockets) {
  constexpr std::string_view kUnix = "unix:";
  while (!addresses.empty()) {
    std::string_view address = text::takeUntil(';', addresses);
    if (!address.starts_with(kUnix)) continue;
    address.remove_prefix(kUnix.size());
    while (!address.empty()) {
      std::string_view value = text::takeUntil(',', address);
      const std::string_view key = text::takeUntil('=', value);
      const auto name = percentUnescaped(value);
      if (!name || name->empty()) continue;
      if (key == "path") sockets.push_back(*name);
      if (key == "abstract") sockets.push_back(std::string(1, '\0') + *name);
    }
  }
}

/// Whether this user listens at the socket: that the folder is the user's does not prove it.
bool hasOwnListener(int socket) {
  ucred listener = {};
  socklen_t size = sizeof listener;
  return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &listener, &size) == 0 &&
         listener.uid == ownUid();
}

FileDescriptor connectTo(const std::string& name, int& error) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (name.size() >= sizeof address.sun_path) {
    error = ENAMETOOLONG;
    return FileDescriptor();
  }
  name.copy(address.sun_path, name.size());
  // An abstract name may hold NULs, so only the size tells where it ends.
  const auto size =
      name.front() == '\0' ? offsetof(sockaddr_un, sun_path) + name.size() : sizeof address;
  FileDescriptor end(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!end.isOpen() || connect(end.get(), reinterpret_cast<const sockaddr*>(&address),
                               static_cast<socklen_t>(size)) != 0) {
    error = errno;
    return FileDescriptor();
  }
  if (hasOwnListener(end.get())) return end;
  error = EPERM;
  return FileDescriptor();
}

}  // namespace

std::vector<std::string> userBusSockets(const std::string& runtime) {
  std::vector<std::string> sockets;
  if (const char* folder = std::getenv("XDG_RUNTIME_DIR")) addBusOf(folder, sockets);
  if (const char* addresses = std::getenv("DBUS_SESSION_BUS_ADDRESS")) {
    addSocketsOf(addresses, sockets);
  }
  std::array<char, PATH_MAX> own{};
  const int length = std::snprintf(own.data(), own.size(), "%s/%u", runtime.c_str(), ownUid());
  if (length > 0 && static_cast<std::size_t>(length) < own.size()) addBusOf(own.data(), sockets);
  return sockets;
}

FileDescriptor connectToUserBus(const std::vector<std::string>& sockets, int& error) {
  error = ENOENT;
  for (const auto& name : sockets) {
    int reason = 0;
    FileDescriptor end = connectTo(name, reason);
    if (end.isOpen()) return end;
    if (reason != ENOENT) error = reason;
  }
  return FileDescriptor();
}

}  // namespace platform
