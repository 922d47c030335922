#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Text measured in the columns of a terminal.
///
/// Terminals disagree about the width of a sequence that stands for one picture (a family of
/// emoji, a skin tone, a flag). So only its first character is shown, about whose width they
/// agree. Accents are kept.
namespace terminal {

/// One character as a cell holds it.
struct CellText {
  std::string_view source;  ///< the character in the text that was read
  std::string bytes;        ///< what is shown of it
  int columns = 0;          ///< 1 or 2; 0 for one that is not shown
};

/// The first character of `text`, which is not empty.
CellText firstCellText(std::string_view text);

/// How many columns the text takes. Counting stops once `limit` is passed.
int columnsOf(std::string_view text, int limit = 1 << 20);

/// `text` if it fits into that many columns; else as much of it as fits, and `ellipsis`.
std::string fitted(std::string_view text, int columns, std::string_view ellipsis = "…");

/// The lines of `text`, broken at blanks, or within a word that is wider than a line. Line breaks
/// in the text and blanks at the start of a line are kept.
std::vector<std::string> wrapped(std::string_view text, int columns);

}  // namespace terminal
