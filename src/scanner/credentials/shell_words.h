#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

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
void appendShellWords(std::string_view text, std::vector<Word>& words);

}  // namespace credentials
