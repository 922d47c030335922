#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terminal {

/// An opaque colour. The screen shows the nearest one that the terminal has.
struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const Rgb&) const = default;
};

/// How a cell is painted. Where a colour is empty, the terminal's own is used.
struct Style {
  std::optional<Rgb> foreground = {};
  std::optional<Rgb> background = {};
  bool bold = false;
  bool dim = false;
  bool reverse = false;

  bool operator==(const Style&) const = default;
};

struct Size {
  int width = 0;
  int height = 0;

  bool operator==(const Size&) const = default;
};

struct Box {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  constexpr int right() const { return x + width; }
  constexpr int bottom() const { return y + height; }
  constexpr bool contains(int column, int row) const {
    return column >= x && column < right() && row >= y && row < bottom();
  }
  bool operator==(const Box&) const = default;
};

/// One place on the screen: a character with its accents, or the right half of a wide one.
struct Cell {
  /// In bytes of UTF-8: a character and as many combining marks as curses keeps in a cell. A mark
  /// that follows no character is put on a blank.
  static constexpr std::size_t kCapacity = 21;

  std::array<char, kCapacity> bytes{' '};
  std::uint8_t length = 1;
  std::uint8_t columns = 1;  ///< 2: wide; 0: the right half of the wide character before it
  Style style = {};

  std::string_view text() const { return {bytes.data(), length}; }
};

/// A screenful of cells. What is written beyond its edges is cut off.
class CellGrid {
 public:
  explicit CellGrid(Size size);

  Size size() const { return size_; }
  const Cell& at(int x, int y) const;

  /// Writes `text` from (x, y) on, at most `columns` of them, and returns how many it took.
  /// Text that does not fit ends in "…" (or `ellipsis`).
  int write(int x, int y, std::string_view text, const Style& style, int columns,
            std::string_view ellipsis = "…");
  /// Fills a box with one character, which must be one column wide.
  void fill(const Box& box, std::string_view character, const Style& style);

 private:
  Cell* cell(int x, int y);
  void put(int x, int y, std::string_view bytes, int columns, const Style& style);

  Size size_;
  std::vector<Cell> cells_;
};

}  // namespace terminal
