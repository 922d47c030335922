#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Names of programs, packages and modules, taken to pieces.
namespace recognition {

/// No known name is longer than this; longer ones are cut.
inline constexpr std::size_t kLongestName = 256;

/// A name as the tables write it: lower case, and "-" for "_" and blanks.
std::string normalized(std::string_view name);

/// Of a program's path: its last component, normalized, without what tells versions and machines
/// apart: "python3.11" is "python", "koboldcpp-linux-x64" is "koboldcpp", "node.exe" is "node". Of
/// one that is called after its version alone (…/claude/versions/2.0.14) the folder's name.
std::string programName(std::string_view path);

/// The words of `name`: its runs of ASCII letters and digits.
std::vector<std::string_view> wordsOf(std::string_view name);

/// Whether a word of a command line is an option, with or without a value behind "=".
bool isOption(std::string_view word);

/// Whether one of the words of `name` is this one.
bool hasWord(std::string_view name, std::string_view word);

/// Whether `list`, words with blanks between them, holds this one.
bool isListed(std::string_view list, std::string_view word);

/// An option's name as the tables write it, without the value behind "=".
class NormalizedOption {
 public:
  explicit NormalizedOption(std::string_view written);

  /// "" for one that is longer than any that is known. It points into this.
  std::string_view name() const { return {buffer_.data(), size_}; }

 private:
  std::array<char, 64> buffer_{};
  std::size_t size_ = 0;
};

/// The words of `list`, which has blanks between them.
std::vector<std::string_view> listed(std::string_view list);

}  // namespace recognition
