#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

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

/// The parts of a list such as PATH, which are separated by ":". Empty parts are left out.
inline std::vector<std::string_view> colonSeparated(std::string_view list) {
  std::vector<std::string_view> parts;
  for (std::size_t begin = 0; begin < list.size();) {
    const std::size_t end = std::min(list.find(':', begin), list.size());
    if (end > begin) parts.push_back(list.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

}  // namespace text
