#include "ui/row_direction.h"

#include <string_view>

#include "text/scalar.h"
#include "ui/row_glyphs.h"

namespace {

using RowGlyphs::kSeparator;

constexpr std::string_view kLeftToRightMark = "\u200E";

bool turnsAround(std::string_view row) {
  while (!row.empty()) {
    const text::Scalar scalar = text::firstScalar(row);
    if (scalar.value >= 0) {
      const auto direction = utf8proc_get_property(scalar.value)->bidi_class;
      if (direction == UTF8PROC_BIDI_CLASS_R || direction == UTF8PROC_BIDI_CLASS_AL) return true;
    }
    row.remove_prefix(scalar.length);
  }
  return false;
}

}  // namespace

std::string leftToRight(std::string row) {
  if (!turnsAround(row)) return row;
  row.insert(0, kLeftToRightMark);
  const std::size_t step = kLeftToRightMark.size() + std::string_view(kSeparator).size();
  for (auto at = row.find(kSeparator); at != std::string::npos;
       at = row.find(kSeparator, at + step)) {
    row.insert(at, kLeftToRightMark);
  }
  return row;
}
