#include "platform/linux/proc_table.h"

#include <charconv>
#include <limits>

namespace platform {
namespace {

std::optional<std::uint64_t> bytesInValue(std::string_view value) {
  const auto digits = value.find_first_not_of(" \t");
  if (digits == std::string_view::npos) return std::nullopt;
  std::uint64_t kibibytes = 0;
  const char* const lineEnd = value.data() + value.size();
  const auto [end, error] = std::from_chars(value.data() + digits, lineEnd, kibibytes);
  constexpr std::uint64_t kBytes = 1024;
  if (error != std::errc() || kibibytes > std::numeric_limits<std::uint64_t>::max() / kBytes ||
      std::string_view(end, static_cast<std::size_t>(lineEnd - end)) != " kB") {
    return std::nullopt;
  }
  return kibibytes * kBytes;
}

}  // namespace

std::optional<std::uint64_t> bytesInTable(std::string_view table, std::string_view key) {
  while (!table.empty()) {
    const auto lineEnd = table.find('\n');
    const std::string_view line = table.substr(0, lineEnd);
    if (line.size() > key.size() && line.starts_with(key) && line[key.size()] == ':') {
      return bytesInValue(line.substr(key.size() + 1));
    }
    if (lineEnd == std::string_view::npos) break;
    table.remove_prefix(lineEnd + 1);
  }
  return std::nullopt;
}

}  // namespace platform
