#include "frontends/terminal/glyphs.h"

#include <algorithm>

#include "frontends/terminal/cell_text.h"
#include "text/display_line.h"
#include "ui/glyph_stand_ins.h"

namespace terminal {
namespace {

bool drawsNone(std::string_view) {
  return false;
}

}  // namespace

std::string inAscii(std::string_view unicode) {
  const std::string ours = withStandIns(unicode, drawsNone);
  std::string_view text = ours;
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const CellText next = firstCellText(text);
    const bool ascii = std::ranges::all_of(
        next.source, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (ascii) {
      out += next.source;
    } else if (next.columns > 0) {
      out += '?';
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
  glyphs.thin = "▀";
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
  glyphs.thin = " ";
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
