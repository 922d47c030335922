#pragma once

#include <string_view>

namespace text {

/// What follows the last "/" once all trailing slashes are dropped; "/" for a path of
/// slashes alone, "" for an empty one.
constexpr std::string_view lastPathComponent(std::string_view path) {
  const auto end = path.find_last_not_of('/');
  if (end == std::string_view::npos) return path.substr(0, path.empty() ? 0 : 1);
  path = path.substr(0, end + 1);
  const auto slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

}  // namespace text
