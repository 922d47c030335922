#include "platform/linux/memory_maps.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>

#include "text/split.h"
#include "text/unicode.h"

namespace platform {
namespace {

/// "7f00-7f10 r--p 00000000 08:01 42   /models/a.gguf"
struct Mapping {
  std::uint64_t bytes = 0;
  std::string_view path;
};

std::optional<Mapping> mappingIn(std::string_view line) {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;
  const char* const last = line.data() + line.size();
  const auto first = std::from_chars(line.data(), last, begin, 16);
  if (first.ec != std::errc() || first.ptr == last || *first.ptr != '-') return std::nullopt;
  const auto second = std::from_chars(first.ptr + 1, last, end, 16);
  if (second.ec != std::errc() || end < begin) return std::nullopt;
  const auto path = line.find('/');
  if (path == std::string_view::npos) return std::nullopt;
  return Mapping{end - begin, line.substr(path)};
}

/// Whether what has this path is memory alone, and no file on a disk.
bool isSharedMemory(std::string_view path) {
  return path.starts_with("/memfd:") || path.starts_with("/dev/") || path.starts_with("/SYSV") ||
         path.starts_with("/anon_hugepage");
}

}  // namespace

std::vector<MappedFile> filesInMaps(std::string_view maps, std::size_t most) {
  std::map<std::string_view, std::uint64_t> sums;
  while (!maps.empty()) {
    if (const auto mapping = mappingIn(text::takeUntil('\n', maps))) {
      if (!isSharedMemory(mapping->path)) sums[mapping->path] += mapping->bytes;
    }
  }
  std::vector<MappedFile> files;
  for (const auto& [path, bytes] : sums) {
    if (text::isUtf8(path)) files.push_back({std::string(path), bytes});
  }
  std::ranges::stable_sort(files, std::ranges::greater(), &MappedFile::bytes);
  if (files.size() > most) files.resize(most);
  return files;
}

}  // namespace platform
