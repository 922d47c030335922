#include "text/blanks.h"

#include "text/scalar.h"

namespace text {
namespace {

bool isBlank(utf8proc_int32_t value) {
  switch (value) {
    case 0x115F:  // Hangul fillers
    case 0x1160:
    case 0x3164:
    case 0xFFA0:
    case 0x2800:   // Braille pattern of no dots
    case 0x1D159:  // musical symbol null notehead
      return true;
    default:
      return utf8proc_category(value) == UTF8PROC_CATEGORY_ZS;
  }
}

/// What changes the characters beside it and is not drawn itself.
bool isInvisible(utf8proc_int32_t value) {
  return value == 0x034F ||                       // combining grapheme joiner
         value == 0x17B4 || value == 0x17B5 ||    // Khmer inherent vowels
         (value >= 0x180B && value <= 0x180F) ||  // Mongolian variation selectors
         value == 0x200C || value == 0x200D ||    // joiners
         (value >= 0xFE00 && value <= 0xFE0F) ||  // variation selectors
         value == 0x16FE4 ||                      // Khitan filler
         (value >= 0xE0100 && value <= 0xE01EF);  // variation selectors
}

}  // namespace

std::string withSingleBlanks(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  bool behindBlank = false;
  while (!text.empty()) {
    const Scalar scalar = firstScalar(text);
    if (isBlank(scalar.value)) {
      if (!behindBlank) out += ' ';
      behindBlank = true;
    } else if (!behindBlank || !isInvisible(scalar.value)) {
      out += text.substr(0, scalar.length);
      behindBlank = false;
    }
    text.remove_prefix(scalar.length);
  }
  return out;
}

}  // namespace text
