#include "frontends/terminal/cell_text.h"

#include <utf8proc.h>

#include "text/scalar.h"

namespace terminal {
namespace {

constexpr std::string_view kReplacement = "\uFFFD";
constexpr std::size_t kMarksPerCell = 4;  // what curses keeps beside the character itself

constexpr utf8proc_int32_t kJoiner = 0x200D;
constexpr utf8proc_int32_t kFirstRegionalIndicator = 0x1F1E6;
constexpr utf8proc_int32_t kLastRegionalIndicator = 0x1F1FF;

bool isRegionalIndicator(utf8proc_int32_t value) {
  return value >= kFirstRegionalIndicator && value <= kLastRegionalIndicator;
}

bool isSkinTone(utf8proc_int32_t value) {
  return value >= 0x1F3FB && value <= 0x1F3FF;
}

bool isPictograph(utf8proc_int32_t value) {
  return utf8proc_get_property(value)->boundclass == UTF8PROC_BOUNDCLASS_EXTENDED_PICTOGRAPHIC;
}

/// Variation selectors and the like: not drawn, they ask for another form of the character before.
bool isInvisible(utf8proc_int32_t value) {
  return value == kJoiner || value == 0x200C || (value >= 0xFE00 && value <= 0xFE0F) ||
         (value >= 0xE0100 && value <= 0xE01EF);
}

/// As terminals and the C library measure it.
int columnsOfScalar(utf8proc_int32_t value) {
  const bool trailingJamo =
      (value >= 0x1160 && value <= 0x11FF) || (value >= 0xD7B0 && value <= 0xD7FF);
  if (trailingJamo) return 0;
  if (utf8proc_category(value) == UTF8PROC_CATEGORY_MC) return 1;
  return utf8proc_charwidth(value);
}

/// The length in bytes of the marks at the start of `rest`, which belong to the character before
/// it. Those that are shown with it are appended to `shown`.
std::size_t takeMarks(std::string_view rest, std::string& shown) {
  std::size_t taken = 0;
  std::size_t marks = 0;
  bool joined = false;
  while (taken < rest.size()) {
    const auto scalar = text::firstScalar(rest.substr(taken));
    const bool belongs =
        scalar.value >= 0 && (columnsOfScalar(scalar.value) == 0 || isSkinTone(scalar.value) ||
                              (joined && isPictograph(scalar.value)));
    if (!belongs) break;
    joined = scalar.value == kJoiner;
    const bool drawn = columnsOfScalar(scalar.value) == 0 && !isInvisible(scalar.value);
    if (drawn && marks < kMarksPerCell) {
      shown += rest.substr(taken, scalar.length);
      ++marks;
    }
    taken += scalar.length;
  }
  return taken;
}

/// How many bytes of the text fit into a line of `columns`.
std::size_t lengthThatFits(std::string_view text, int columns) {
  std::size_t length = 0;
  while (length < text.size()) {
    const CellText next = firstCellText(text.substr(length));
    if (next.columns > columns) break;
    columns -= next.columns;
    length += next.source.size();
  }
  return length;
}

/// The same, but breaking between words where that is possible.
std::size_t lengthOfLine(std::string_view text, int columns) {
  const std::size_t length = lengthThatFits(text, columns);
  if (length == text.size()) return length;
  const std::size_t word = text.find_first_not_of(' ');
  const std::size_t blank = text.rfind(' ', length);
  return blank != std::string_view::npos && blank > word ? blank : length;
}

}  // namespace

CellText firstCellText(std::string_view text) {
  const auto first = text::firstScalar(text);
  if (first.value < 0) return {text.substr(0, 1), std::string(kReplacement), 1};
  if (first.value < 0x80 && (text.size() == 1 || static_cast<unsigned char>(text[1]) < 0x80)) {
    return {text.substr(0, 1), std::string(text.substr(0, 1)), 1};
  }
  if (isRegionalIndicator(first.value)) {  // a flag is shown as the letters that spell it
    const char letter = static_cast<char>('A' + (first.value - kFirstRegionalIndicator));
    return {text.substr(0, first.length), std::string(1, letter), 1};
  }

  CellText cell;
  cell.columns = columnsOfScalar(first.value);
  cell.bytes = text.substr(0, first.length);
  if (cell.columns == 0) {  // a mark that follows no character
    cell.bytes = isInvisible(first.value) ? "" : " " + cell.bytes;
    cell.columns = isInvisible(first.value) ? 0 : 1;
  }
  cell.source = text.substr(0, first.length + takeMarks(text.substr(first.length), cell.bytes));
  return cell;
}

int columnsOf(std::string_view text, int limit) {
  int columns = 0;
  while (!text.empty() && columns <= limit) {
    const CellText next = firstCellText(text);
    columns += next.columns;
    text.remove_prefix(next.source.size());
  }
  return columns;
}

std::string fitted(std::string_view text, int columns, std::string_view ellipsis) {
  if (columns <= 0) return {};
  if (columnsOf(text, columns) <= columns) return std::string(text);
  const int room = columns - columnsOf(ellipsis);
  if (room < 0) return std::string(text.substr(0, lengthThatFits(text, columns)));
  return std::string(text.substr(0, lengthThatFits(text, room))) + std::string(ellipsis);
}

std::vector<std::string> wrapped(std::string_view text, int columns) {
  std::vector<std::string> lines;
  if (columns < 2) return lines;  // no room for a wide character
  for (;;) {
    const std::string_view paragraph = text.substr(0, text.find('\n'));
    std::string_view rest = paragraph;
    do {
      const std::size_t length = lengthOfLine(rest, columns);
      const std::size_t next = rest.find_first_not_of(' ', length);
      const bool goesOn = next != std::string_view::npos;
      const std::string_view line = rest.substr(0, length);
      lines.emplace_back(goesOn ? line.substr(0, line.find_last_not_of(' ') + 1) : line);
      rest = goesOn ? rest.substr(next) : std::string_view();
    } while (!rest.empty());
    if (paragraph.size() == text.size()) return lines;
    text.remove_prefix(paragraph.size() + 1);
  }
}

}  // namespace terminal
