#include "ui/glyph_stand_ins.h"

#include <algorithm>
#include <iterator>

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

}  // namespace

std::string withStandIns(std::string_view text,
                         const std::function<bool(std::string_view glyph)>& isDrawn) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const auto* found =
        std::find_if(std::begin(kStandIns), std::end(kStandIns),
                     [text](const StandIn& entry) { return text.starts_with(entry.glyph); });
    if (found == std::end(kStandIns)) {
      result += text.front();
      text.remove_prefix(1);
    } else {
      result += isDrawn(found->glyph) ? found->glyph : found->ascii;
      text.remove_prefix(found->glyph.size());
    }
  }
  return result;
}
