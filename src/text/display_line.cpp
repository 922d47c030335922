#include "text/display_line.h"

#include <utility>

#include "text/scalar.h"

namespace text {
namespace {

constexpr utf8proc_int32_t kReplacementScalar = 0xFFFD;
constexpr std::string_view kReplacement = "\uFFFD";
constexpr utf8proc_int32_t kGroundScalar = 0x25CC;
constexpr std::string_view kGround = "\u25CC";
constexpr std::string_view kEllipsis = "…";

/// Format characters that are visible, or that writing needs.
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

/// Whether the text would stand on the character before it.
bool beginsWithMark(std::string_view text) {
  if (text.empty() || !isHarmless(firstScalar(text).value)) return false;
  utf8proc_int32_t state = 0;
  return !utf8proc_grapheme_break_stateful(' ', firstScalar(text).value, &state);
}

/// Whether a character ends behind `text`, which is the beginning of one, if `next` follows.
bool breaksBehind(std::string_view text, utf8proc_int32_t next) {
  utf8proc_int32_t state = 0;
  utf8proc_int32_t last = firstScalar(text).value;
  text.remove_prefix(firstScalar(text).length);
  while (!text.empty()) {
    const Scalar scalar = firstScalar(text);
    utf8proc_grapheme_break_stateful(last, scalar.value, &state);
    last = scalar.value;
    text.remove_prefix(scalar.length);
  }
  return utf8proc_grapheme_break_stateful(last, next, &state);
}

std::size_t lengthOfLastScalar(std::string_view utf8) {
  std::size_t length = 1;
  while (length < utf8.size() && (utf8[utf8.size() - length] & 0xC0) == 0x80) ++length;
  return length;
}

/// A text to which scalars are added, and in which no character has more than kMostCharacterBytes.
class BoundedText {
 public:
  /// `bytes` is the scalar in UTF-8.
  void add(utf8proc_int32_t scalar, std::string_view bytes) {
    if (previous_ < 0 || utf8proc_grapheme_break_stateful(previous_, scalar, &state_)) {
      begin(scalar);
    }
    previous_ = scalar;
    isCut_ = isCut_ || text_.size() - begin_ + bytes.size() > kMostCharacterBytes;
    if (!isCut_) text_ += bytes;
  }

  /// The length in bytes of all characters but the last.
  std::size_t lengthBeforeLast() const { return begin_; }
  std::size_t length() const { return text_.size(); }
  void shorten(std::size_t length) { text_.resize(length); }
  std::string take() { return std::move(text_); }

 private:
  /// Begins the next character. If the last one was cut, its rest may end in a joiner or a prefix,
  /// which would join the two characters into one; this prevents it.
  void begin(utf8proc_int32_t scalar) {
    while (isCut_ && !breaksBehind(std::string_view(text_).substr(begin_), scalar)) {
      text_.resize(text_.size() - lengthOfLastScalar(text_));
      if (text_.size() == begin_) {
        text_ += kReplacement;
        break;
      }
    }
    isCut_ = false;
    begin_ = text_.size();
  }

  std::string text_;
  std::size_t begin_ = 0;  ///< where the last character begins
  bool isCut_ = false;     ///< the rest of the last character is dropped
  utf8proc_int32_t previous_ = -1;
  utf8proc_int32_t state_ = 0;
};

/// Makes the first scalar of `text`, which must not be empty, harmless, adds it to `out`, and
/// returns its length in bytes.
std::size_t addFirst(std::string_view text, bool keepsLineFeeds, BoundedText& out) {
  const Scalar scalar = firstScalar(text);
  if (isHarmless(scalar.value) || (keepsLineFeeds && scalar.value == '\n')) {
    out.add(scalar.value, text.substr(0, scalar.length));
  } else {
    out.add(kReplacementScalar, kReplacement);
  }
  return scalar.length;
}

/// Adds `text`, made harmless, to what `out` already holds and returns all of it. When that would
/// have more than `mostBytes`, it is as many characters as fit, and an ellipsis.
std::string bounded(std::string_view text, bool keepsLineFeeds, std::size_t mostBytes,
                    BoundedText out = {}) {
  const std::size_t room = mostBytes - kEllipsis.size();
  std::size_t fitting = 0;
  while (!text.empty() && out.length() <= mostBytes) {
    text.remove_prefix(addFirst(text, keepsLineFeeds, out));
    if (out.lengthBeforeLast() <= room) fitting = out.lengthBeforeLast();
  }
  if (out.length() <= mostBytes) return out.take();
  out.shorten(fitting);
  return out.take().append(kEllipsis);
}

}  // namespace

std::string displayLine(std::string_view text) {
  return bounded(text, false, kMostTextBytes);
}

std::string displayLines(std::string_view text) {
  return bounded(text, true, kMostTextBytes);
}

std::string displayName(std::string_view text) {
  BoundedText out;
  if (beginsWithMark(text)) out.add(kGroundScalar, kGround);
  return bounded(text, false, kMostNameBytes, std::move(out));
}

}  // namespace text
