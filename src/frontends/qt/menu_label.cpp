#include "frontends/qt/menu_label.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "frontends/qt/qt_text.h"
#include "text/display_line.h"
#include "text/unicode.h"
#include "ui/pressure_level.h"
#include "ui/row_direction.h"

namespace {

constexpr std::size_t kLongestLabel = 120;
constexpr std::size_t kLongestToolTip = 1000;

std::string cut(std::string_view title, std::size_t limit) {
  return text::shortened(title, limit, limit - 1);
}

/// Replaces line feeds, which would break the row, and tabs, which begin a new column, and keeps a
/// name in a right-to-left script from reversing the row.
std::string oneLine(std::string_view title) {
  return leftToRight(text::displayLine(cut(title, kLongestLabel)));
}

std::string doubled(const std::string& text, char mark) {
  std::string result;
  for (const char byte : text) {
    result += byte;
    if (byte == mark) result += byte;
  }
  return result;
}

/// Doubles the first mark that is followed by another character.
std::string withOneMore(std::string text, char mark) {
  const std::size_t other = text.find_first_not_of(mark, std::min(text.find(mark), text.size()));
  if (other != std::string::npos) text.insert(other, 1, mark);
  return text;
}

}  // namespace

QString menuLabel(std::string_view title) {
  return toQString(doubled(oneLine(title), '&'));
}

std::string hostMenuLabel(std::string_view title, TrayHostKind host) {
  std::string line = oneLine(title);
  if (host == TrayHostKind::usual) return doubled(line, '_');
  return withOneMore(std::move(line), '_');
}

std::string stripLabel(const MemoryPressureView& strip) {
  constexpr int kCells = 10;
  const int filled = static_cast<int>(std::lround(strip.pressure * kCells));
  std::string label;
  for (int cell = 0; cell < kCells; ++cell) label += cell < filled ? "█" : "░";
  return label + " " + std::to_string(percentUsed(strip.pressure)) + "%";
}

QString plainToolTip(std::string_view text) {
  if (text.empty()) return {};
  return "<p style='white-space:pre-wrap'>" +
         toQString(cut(text, kLongestToolTip)).toHtmlEscaped().replace('\n', "<br>") + "</p>";
}
