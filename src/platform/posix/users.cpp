#include "platform/users.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <span>
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
  std::array<char, kFirstSize> first = {};  // enough for nearly all, and asked at each scan
  std::vector<char> larger;
  std::span<char> buffer = first;
  passwd entry = {};
  passwd* found = nullptr;
  int error = 0;
  while ((error = getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found)) != 0) {
    if (error == EINTR) continue;
    if (error != ERANGE || buffer.size() >= kLargestEntry) return std::nullopt;
    larger.resize(buffer.size() * 2);
    buffer = larger;
  }
  if (found == nullptr || found->pw_name == nullptr) return std::nullopt;
  const std::string_view name = found->pw_name;
  if (name.empty() || !text::isUtf8(name)) return std::nullopt;
  return std::string(name);
}

}  // namespace platform
