#include "platform/users.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <vector>

#include "text/unicode.h"

namespace platform {

std::uint32_t ownUid() {
  return getuid();
}

std::optional<std::string> loginName(std::uint32_t uid) {
  constexpr std::size_t kFirstSize = 1024;
  constexpr std::size_t kLargestEntry = 1 << 20;
  std::vector<char> buffer(kFirstSize);
  passwd entry = {};
  passwd* found = nullptr;
  int error = 0;
  while ((error = getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found)) != 0) {
    if (error == EINTR) continue;
    if (error != ERANGE || buffer.size() >= kLargestEntry) return std::nullopt;
    buffer.resize(buffer.size() * 2);
  }
  if (found == nullptr || found->pw_name == nullptr) return std::nullopt;
  const std::string_view name = found->pw_name;
  if (name.empty() || !text::isUtf8(name)) return std::nullopt;
  return std::string(name);
}

}  // namespace platform
