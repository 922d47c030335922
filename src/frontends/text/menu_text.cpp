#include "frontends/text/menu_text.h"

#include <algorithm>

#include "text/display_line.h"
#include "text/format.h"

namespace {

constexpr std::size_t kCells = 40;

/// The letter of the strip's bar at this place; after Z it begins anew.
char letter(std::size_t place) {
  return static_cast<char>('A' + place % 26);
}

/// "  [A]" for a process that has a bar in the strip, else nothing.
std::string barMark(const MemoryPressureView& strip, std::int32_t pid) {
  const auto bar = std::find_if(strip.segments.begin(), strip.segments.end(),
                                [pid](const Segment& segment) { return segment.pid == pid; });
  if (bar == strip.segments.end()) return "";
  return std::string("  [") + letter(static_cast<std::size_t>(bar - strip.segments.begin())) + "]";
}

std::string itemLine(const MenuItem& item, const MemoryPressureView& strip) {
  if (item.kind == MenuItem::Kind::separator) return "";
  if (item.kind == MenuItem::Kind::strip) return stripText(strip);
  std::string line = text::displayLine(item.title);
  if (item.process) {
    const std::int32_t pid = item.process->pid;
    line += "  ·  pid " + std::to_string(pid) + barMark(strip, pid);
  }
  return line;
}

const MemoryPressureView& stripOf(const Menu& menu) {
  static const MemoryPressureView kNone;
  const auto item = std::find_if(menu.items.begin(), menu.items.end(),
                                 [](const MenuItem& one) { return one.strip != nullptr; });
  return item == menu.items.end() ? kNone : *item->strip;
}

}  // namespace

std::string stripText(const MemoryPressureView& strip) {
  const double scale = strip.scale();
  std::string bars;
  for (std::size_t i = 0; i < strip.segments.size(); ++i) {
    const auto share = static_cast<std::size_t>(scale * strip.segments[i].fraction * kCells);
    bars.append(std::max<std::size_t>(share, 1), letter(i));
  }
  bars.resize(std::min(bars.size(), kCells));

  std::string line = "[" + bars;
  for (std::size_t cell = bars.size(); cell < kCells; ++cell) line += "·";
  return line + "]  " + text::format("%.0f%%", strip.pressure * 100);
}

std::string menuText(const Menu& menu) {
  const MemoryPressureView& strip = stripOf(menu);
  std::string text;
  for (const MenuItem& item : menu.items) text += itemLine(item, strip) + "\n";
  return text;
}
