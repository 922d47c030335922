#include "platform/linux/file_tree.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <memory>

#include "platform/linux/file_reader.h"
#include "platform/linux/trimmed.h"
#include "text/decimal.h"

namespace platform {

std::optional<std::string> FileTree::text(const std::string& path) const {
  constexpr std::size_t kMost = 16 << 10;
  const FileDescriptor file(
      open((root_ + "/" + path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.isOpen()) return std::nullopt;
  FileReader reader(kMost);
  const auto bytes = reader.read(file.get());
  if (!bytes) return std::nullopt;
  return std::string(*bytes);
}

std::string FileTree::line(const std::string& path) const {
  const std::string whole = text(path).value_or("");
  return std::string(trimmed(std::string_view(whole).substr(0, whole.find('\n'))));
}

std::optional<std::uint64_t> FileTree::number(const std::string& path) const {
  return text::decimal<std::uint64_t>(line(path));
}

std::vector<std::string> FileTree::names(const std::string& folder) const {
  constexpr std::size_t kMost = 10'000;
  std::vector<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir((root_ + "/" + folder).c_str()),
                                                    closedir);
  if (!entries) return names;
  while (const dirent* entry = readdir(entries.get())) {
    if (names.size() == kMost) break;
    if (entry->d_name[0] != '.') names.emplace_back(entry->d_name);
  }
  std::ranges::sort(names);
  return names;
}

const FileTree& systemTree() {
  static const FileTree tree("/sys");
  return tree;
}

std::optional<std::uint64_t> numberAfter(std::string_view prefix, std::string_view name) {
  if (!name.starts_with(prefix)) return std::nullopt;
  return text::decimal<std::uint64_t>(name.substr(prefix.size()));
}

}  // namespace platform
