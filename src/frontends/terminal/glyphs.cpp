#include "frontends/terminal/glyphs.h"

#include <algorithm>
#include <iterator>

#include "frontends/terminal/cell_text.h"
#include "text/display_line.h"

namespace terminal {
namespace {

struct StandIn {
  std::string_view glyph;
  std::string_view ascii;
};

constexpr StandIn kStandIns[] = {
    {"★", "*"},  {"↺", "~"},  {"🔒", "[locked]"}, {"…", "..."}, {"·", "-"},  {"—", "-"},
    {"–", "-"},  {"’", "'"},  {"‘", "'"},        {"“", "\""},  {"”", "\""}, {"•", "*"},
    {"→", "->"}, {"←", "<-"}, {"²", "2"},        {"©", "(c)"}, {"↑", "^"},  {"↓", "v"},
};

std::string_view standInFor(std::string_view character) {
  const auto* found = std::find_if(std::begin(kStandIns), std::end(kStandIns),
                                   [&](const StandIn& entry) { return entry.glyph == character; });
  return found == std::end(kStandIns) ? "?" : found->ascii;
}

}  // namespace

std::string inAscii(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const CellText next = firstCellText(text);
    const bool ascii = std::ranges::all_of(
        next.source, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (ascii) {
      out += next.source;
    } else if (next.columns > 0) {
      out += standInFor(next.source);
    }
    text.remove_prefix(next.source.size());
  }
  return out;
}

Glyphs Glyphs::unicode() {
  Glyphs glyphs;
  glyphs.dot = "●";
  glyphs.ellipsis = "…";
  glyphs.divider = "▕";
  glyphs.emptyTrack = "·";
  glyphs.pressureLow = "░";
  glyphs.pressureMedium = "▒";
  glyphs.pressureHigh = "▓";
  glyphs.horizontal = "─";
  glyphs.vertical = "│";
  glyphs.topLeft = "┌";
  glyphs.topRight = "┐";
  glyphs.bottomLeft = "└";
  glyphs.bottomRight = "┘";
  glyphs.thumb = "▐";
  glyphs.upDown = "↑↓";
  return glyphs;
}

Glyphs Glyphs::ascii() {
  Glyphs glyphs;
  glyphs.dot = "o";
  glyphs.ellipsis = "...";
  glyphs.divider = " ";
  glyphs.emptyTrack = ".";
  glyphs.pressureLow = "-";
  glyphs.pressureMedium = "=";
  glyphs.pressureHigh = "#";
  glyphs.horizontal = "-";
  glyphs.vertical = "|";
  glyphs.topLeft = "+";
  glyphs.topRight = "+";
  glyphs.bottomLeft = "+";
  glyphs.bottomRight = "+";
  glyphs.thumb = "#";
  glyphs.upDown = "Up/Down";
  glyphs.unicode_ = false;
  return glyphs;
}

std::string Glyphs::line(std::string_view text) const {
  return unicode_ ? text::displayLine(text) : inAscii(text::displayLine(text));
}

std::string Glyphs::lines(std::string_view text) const {
  return unicode_ ? text::displayLines(text) : inAscii(text::displayLines(text));
}

}  // namespace terminal
