#pragma once

#include <cstddef>
#include <string_view>

namespace credentials {

/// A word of a command, without the quotation marks around it.
struct Word {
  std::string_view text;
  std::size_t begin = 0;       ///< its offset in the text
  bool beginsCommand = false;  ///< the first one, and those behind "|", ";", "&&" and the like
  bool isBehindPipe = false;   ///< with beginsCommand: the command before writes to this one
  bool isHereString = false;   ///< behind "<<<"
};

/// Splits a text into words much as a shell does. Nothing is expanded, and a quotation mark that
/// is not closed counts as an ordinary character. Linear in the length of the text.
class ShellWords {
 public:
  explicit ShellWords(std::string_view text) : text_(text) {}

  /// The next word; false when there is none left.
  bool next(Word& word);

 private:
  void takeSeparator();
  std::size_t wordEnd(std::size_t at);
  std::size_t closing(std::size_t open);

  std::string_view text_;
  std::size_t at_ = 0;
  bool beginsCommand_ = true;
  bool isBehindPipe_ = false;
  bool isHereString_ = false;
  // Behind these offsets there is no such quotation mark: remembered so that a search in vain is
  // made only once.
  std::size_t noDoubleBehind_ = static_cast<std::size_t>(-1);
  std::size_t noSingleBehind_ = static_cast<std::size_t>(-1);
};

}  // namespace credentials
