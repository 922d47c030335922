#include "frontends/terminal/signs.h"

#include <algorithm>
#include <iterator>

#include "frontends/terminal/cell_text.h"
#include "text/display_line.h"

namespace terminal {
namespace {

struct StandIn {
  std::string_view sign;
  std::string_view ascii;
};

constexpr StandIn kStandIns[] = {
    {"★", "*"},  {"↺", "~"},  {"🔒", "[locked]"}, {"…", "..."}, {"·", "-"},  {"—", "-"},
    {"–", "-"},  {"’", "'"},  {"‘", "'"},        {"“", "\""},  {"”", "\""}, {"•", "*"},
    {"→", "->"}, {"←", "<-"}, {"²", "2"},        {"©", "(c)"}, {"↑", "^"},  {"↓", "v"},
};

std::string_view standInFor(std::string_view character) {
  const auto* found = std::find_if(std::begin(kStandIns), std::end(kStandIns),
                                   [&](const StandIn& entry) { return entry.sign == character; });
  return found == std::end(kStandIns) ? "?" : found->ascii;
}

}  // namespace

std::string inAscii(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const CellText next = firstCellText(text);
    const bool ascii = std::all_of(next.source.begin(), next.source.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (ascii) {
      out += next.source;
    } else if (next.columns > 0) {
      out += standInFor(next.source);
    }
    text.remove_prefix(next.source.size());
  }
  return out;
}

Signs Signs::unicode() {
  Signs signs;
  signs.dot = "●";
  signs.ellipsis = "…";
  signs.divider = "▕";
  signs.emptyTrack = "·";
  signs.pressureLow = "░";
  signs.pressureMedium = "▒";
  signs.pressureHigh = "▓";
  signs.horizontal = "─";
  signs.vertical = "│";
  signs.topLeft = "┌";
  signs.topRight = "┐";
  signs.bottomLeft = "└";
  signs.bottomRight = "┘";
  signs.thumb = "▐";
  signs.upDown = "↑↓";
  return signs;
}

Signs Signs::ascii() {
  Signs signs;
  signs.dot = "o";
  signs.ellipsis = "...";
  signs.divider = " ";
  signs.emptyTrack = ".";
  signs.pressureLow = "-";
  signs.pressureMedium = "=";
  signs.pressureHigh = "#";
  signs.horizontal = "-";
  signs.vertical = "|";
  signs.topLeft = "+";
  signs.topRight = "+";
  signs.bottomLeft = "+";
  signs.bottomRight = "+";
  signs.thumb = "#";
  signs.upDown = "Up/Down";
  signs.unicode_ = false;
  return signs;
}

std::string Signs::line(std::string_view text) const {
  return unicode_ ? text::displayLine(text) : inAscii(text::displayLine(text));
}

std::string Signs::lines(std::string_view text) const {
  return unicode_ ? text::displayLines(text) : inAscii(text::displayLines(text));
}

}  // namespace terminal
