#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// The user that the program runs as.
std::uint32_t ownUid();

/// The login name of a user; none when the system knows none. May ask a directory
/// service: ask seldom.
std::optional<std::string> loginName(std::uint32_t uid);

/// What a user is called: the login name, else "uid 1000".
inline std::string nameOfUser(std::uint32_t uid) {
  return loginName(uid).value_or("uid " + std::to_string(uid));
}

}  // namespace platform
