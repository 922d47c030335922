#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Small files below one folder, such as /sys. Whatever can't be read is simply not there.
class FileTree {
 public:
  explicit FileTree(std::string root) : root_(std::move(root)) {}

  /// The first 16 KiB of a file.
  std::optional<std::string> text(const std::string& path) const;

  /// Its first line, without blanks at the ends; "" when there is none.
  std::string line(const std::string& path) const;

  /// The number that it holds, in decimal, and nothing else.
  std::optional<std::uint64_t> number(const std::string& path) const;

  /// What a folder holds, by name; of more than 10,000 entries the rest is passed over.
  std::vector<std::string> names(const std::string& folder) const;

 private:
  std::string root_;
};

/// /sys.
const FileTree& systemTree();

/// The number behind `prefix` in `name`: 128 in "renderD128"; none when it is named otherwise.
std::optional<std::uint64_t> numberAfter(std::string_view prefix, std::string_view name);

}  // namespace platform
