#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Text measured in the columns of a terminal.
///
/// Terminals disagree about sequences that stand for one picture (a family of emoji, a skin
/// tone, a flag): so of such a sequence only the first character is shown, whose width all agree
/// about. Accents stay.
namespace terminal {

/// One character as a cell holds it.
struct CellText {
  std::string_view source;  ///< the character in the text that was read
  std::string bytes;        ///< what is shown of it
  int columns = 0;          ///< 1 or 2; 0 for one that does not show
};

/// The first character of `text`, which is not empty.
CellText firstCellText(std::string_view text);

/// How many columns the text takes; stops counting beyond `limit`.
int columnsOf(std::string_view text, int limit = 1 << 20);

/// `text`, or as much of it as fits before `ellipsis` in that many columns.
std::string fitted(std::string_view text, int columns, std::string_view ellipsis = "…");

/// The lines of `text`, broken at blanks, or within a word that is wider than a line. Its own
/// line breaks and the blanks at the start of a line stay.
std::vector<std::string> wrapped(std::string_view text, int columns);

}  // namespace terminal
