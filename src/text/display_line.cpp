#include "text/display_line.h"

#include "text/scalar.h"

namespace text {
namespace {

constexpr std::string_view kReplacement = "\uFFFD";

/// The format characters that are seen, or that spelling needs.
bool isNeededFormat(utf8proc_int32_t value) {
  switch (value) {
    case 0x200C:   // zero width non-joiner
    case 0x200D:   // zero width joiner
    case 0x06DD:   // Arabic end of ayah
    case 0x070F:   // Syriac abbreviation mark
    case 0x0890:   // Arabic pound mark above
    case 0x0891:   // Arabic piastre mark above
    case 0x08E2:   // Arabic disputed end of ayah
    case 0x110BD:  // Kaithi number sign
    case 0x110CD:  // Kaithi number sign above
      return true;
    default:
      return value >= 0x0600 && value <= 0x0605;  // Arabic number signs
  }
}

bool isHarmless(utf8proc_int32_t value) {
  if (value < 0) return false;
  switch (utf8proc_category(value)) {
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
      return false;
    case UTF8PROC_CATEGORY_CF:
      return isNeededFormat(value);
    default:
      return true;
  }
}

std::string sanitised(std::string_view text, bool keepsLineFeeds) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const Scalar scalar = firstScalar(text);
    const bool kept = isHarmless(scalar.value) || (keepsLineFeeds && scalar.value == '\n');
    out += kept ? text.substr(0, scalar.length) : kReplacement;
    text.remove_prefix(scalar.length);
  }
  return out;
}

}  // namespace

std::string displayLine(std::string_view text) {
  return sanitised(text, false);
}

std::string displayLines(std::string_view text) {
  return sanitised(text, true);
}

}  // namespace text
