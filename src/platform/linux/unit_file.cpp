#include "platform/linux/unit_file.h"

#include <algorithm>
#include <optional>

#include "platform/linux/trimmed.h"
#include "platform/linux/unit_command.h"
#include "text/unicode.h"

namespace platform {
namespace {

using namespace std::string_view_literals;

constexpr auto kLineEnds = "\n\0"sv;

/// Whether the line is continued: it ends in a backslash that is not itself escaped.
bool goesOn(std::string_view line) {
  const auto last = line.find_last_not_of('\\');
  const auto backslashes = line.size() - (last == std::string_view::npos ? 0 : last + 1);
  return backslashes % 2 == 1;
}

/// The lines of a unit file, continued ones joined, comments left out.
class UnitLines {
 public:
  explicit UnitLines(std::string_view bytes) : rest_(bytes) {
    constexpr auto kByteOrderMark = "\xef\xbb\xbf"sv;
    if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
  }

  std::optional<std::string> next() {
    std::optional<std::string> joined;
    while (!rest_.empty()) {
      const std::string_view line = takeLine();
      const auto begin = line.find_first_not_of(kBlanks);
      const bool isComment =
          begin != std::string_view::npos && (line[begin] == '#' || line[begin] == ';');
      if (isComment) continue;  // comments may also stand within a continued line
      if (!joined) joined.emplace();
      joined->append(line.substr(std::min(begin, line.size())));
      if (!goesOn(line)) return joined;
      joined->back() = ' ';
    }
    return joined;
  }

 private:
  std::string_view takeLine() {
    const auto end = rest_.find_first_of(kLineEnds);
    std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
  }

  std::string_view rest_;
};

void assign(std::string_view key, std::string_view value, ServiceUnit& unit) {
  if (key == "Restart") {
    unit.keepAlive = !value.empty() && value != "no";
  } else if (key == "ExecStart") {
    if (value.empty()) {
      unit.command.clear();
    } else if (unit.command.empty()) {
      unit.command = commandWords(value).value_or(std::vector<std::string>());
    }
  }
}

}  // namespace

ServiceUnit serviceUnit(std::string_view bytes) {
  ServiceUnit unit;
  UnitLines lines(bytes);
  bool inService = false;
  while (const auto line = lines.next()) {
    const std::string_view text = trimmed(*line);
    if (text.starts_with('[')) {
      inService = text == "[Service]";
    } else if (const auto equals = text.find('=');
               inService && equals != std::string_view::npos && text::isUtf8(text)) {
      assign(trimmed(text.substr(0, equals)), trimmed(text.substr(equals + 1)), unit);
    }
  }
  return unit;
}

}  // namespace platform
