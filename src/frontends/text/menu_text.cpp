#include "frontends/text/menu_text.h"

#include <algorithm>

#include "text/blanks.h"
#include "text/display_line.h"
#include "ui/row_parts.h"
#include "ui/strip_text.h"

namespace {

constexpr std::size_t kCells = 40;

/// Programs that read the lines split them at two blanks, so a name must not contain any.
std::string titleLine(const MenuItem& item) {
  const std::string_view title = item.title;
  const auto [begin, end] = item.name;
  return text::displayLine(title.substr(0, begin)) +
         text::withSingleBlanks(text::displayLine(title.substr(begin, end - begin))) +
         text::displayLine(title.substr(end));
}

std::string itemLine(const MenuItem& item, const MemoryPressureView& strip) {
  if (item.kind == MenuItem::Kind::separator) return "";
  if (item.kind == MenuItem::Kind::strip) return stripText(strip);
  std::string line = titleLine(item);
  if (item.process) {
    const std::int32_t pid = item.process->pid;
    line +=
        std::string(RowParts::kSeparator) + "pid " + std::to_string(pid) + segmentTag(strip, pid);
  }
  return line;
}

}  // namespace

std::string stripText(const MemoryPressureView& strip) {
  std::string segments;
  for (std::size_t i = 0; i < strip.segments.size(); ++i) {
    segments.append(segmentLength(strip, i, kCells), segmentLetter(i));
  }
  segments.resize(std::min(segments.size(), kCells));

  std::string line = "[" + segments;
  for (std::size_t cell = segments.size(); cell < kCells; ++cell) line += "·";
  return line + "]  " + std::to_string(percentUsed(strip)) + "%";
}

std::string menuText(const Menu& menu) {
  const auto found = stripOf(menu);
  const MemoryPressureView strip = found ? *found : MemoryPressureView();
  std::string text;
  for (const MenuItem& item : menu.items) text += itemLine(item, strip) + "\n";
  return text;
}
