#pragma once

#include <cstddef>
#include <string_view>

namespace credentials {

/// A word of a command, without the quotation marks around it.
struct Word {
  std::string_view text;
  std::size_t begin = 0;       ///< its place in the text it was split from
  bool beginsCommand = false;  ///< the first one, and those behind "|", ";", "&&" and the like
  bool isBehindPipe = false;   ///< with beginsCommand: the command before writes to this one
  bool isHereString = false;   ///< behind "<<<"
};

/// Splits a text into words nearly as a shell does; nothing is expanded, and where a quotation
/// mark is not closed it is taken for a letter. Linear in the length of the text.
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
  // No mark of the kind stands behind these places: a search in vain is made but once.
  std::size_t noDoubleBehind_ = static_cast<std::size_t>(-1);
  std::size_t noSingleBehind_ = static_cast<std::size_t>(-1);
};

}  // namespace credentials
