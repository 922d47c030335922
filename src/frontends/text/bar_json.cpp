#include "frontends/text/bar_json.h"

#include <algorithm>
#include <iterator>

#include "text/display_line.h"
#include "text/json_writer.h"
#include "ui/memory_pressure_view.h"
#include "ui/pressure_level.h"

namespace {

/// The menu's lines between the strip and the second section: what a tooltip has room for.
std::string toolTipOf(const Menu& menu) {
  std::string lines;
  int separators = 0;
  for (const MenuItem& item : menu.items) {
    if (item.kind == MenuItem::Kind::strip) continue;
    if (item.kind == MenuItem::Kind::separator && ++separators == 2) break;
    if (!lines.empty()) lines += '\n';
    lines += text::displayLine(item.title);
  }
  return lines;
}

}  // namespace

std::string barJson(const Menu& menu) {
  const auto strip = stripOf(menu);
  const MemoryPressureView shown = strip ? *strip : MemoryPressureView();
  const std::string share = std::to_string(percentUsed(shown.pressure)) + "%";
  text::JsonWriter json;
  json.beginObject();
  json.member("text", share);
  json.member("full_text", share);
  json.member("tooltip", toolTipOf(menu));
  json.member("class", pressureWord(pressureLevel(shown.pressure)));
  json.member("percentage", percentUsed(shown.pressure));
  json.endObject();
  return json.text() + "\n";
}
