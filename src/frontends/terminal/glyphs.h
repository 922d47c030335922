#pragma once

#include <string>
#include <string_view>

namespace terminal {

/// The glyphs that a terminal can show: Unicode's, or, where the locale is not UTF-8, ASCII's.
class Glyphs {
 public:
  static Glyphs unicode();
  static Glyphs ascii();

  std::string_view dot;         ///< stands before a process, in its colour
  std::string_view ellipsis;    ///< what was cut off
  std::string_view divider;     ///< at the right end of a segment
  std::string_view emptyTrack;  ///< memory that no segment of the strip covers
  std::string_view thin;  ///< a track that is half as high; " " where there is no glyph for it
  std::string_view pressureLow;
  std::string_view pressureMedium;
  std::string_view pressureHigh;
  std::string_view horizontal;
  std::string_view vertical;
  std::string_view topLeft;
  std::string_view topRight;
  std::string_view bottomLeft;
  std::string_view bottomRight;
  std::string_view thumb;  ///< where one is in a long list
  std::string_view upDown;

  /// Somebody's text as one line (lines) that cannot do harm and that this terminal can show.
  std::string line(std::string_view text) const;
  std::string lines(std::string_view text) const;

 private:
  bool unicode_ = true;
};

/// `unicode` in ASCII: stand-ins for the program's own glyphs, "?" for any other character.
std::string inAscii(std::string_view unicode);

}  // namespace terminal
