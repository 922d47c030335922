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

/// Whether the text would stand on the character before it.
bool beginsWithMark(std::string_view text) {
  if (text.empty() || !isHarmless(firstScalar(text).value)) return false;
  utf8proc_int32_t state = 0;
  return !utf8proc_grapheme_break_stateful(' ', firstScalar(text).value, &state);
}

/// Whether a character ends between `text`, which is the beginning of one, and `next`.
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

/// A text that grows by scalars and holds no character of more than kMostCharacterBytes.
class BoundedText {
 public:
  /// `bytes` are the scalar's own, and valid.
  void add(utf8proc_int32_t scalar, std::string_view bytes) {
    if (previous_ < 0 || utf8proc_grapheme_break_stateful(previous_, scalar, &state_)) {
      begin(scalar);
    }
    previous_ = scalar;
    isCut_ = isCut_ || text_.size() - begin_ + bytes.size() > kMostCharacterBytes;
    if (!isCut_) text_ += bytes;
  }

  /// Of the characters so far, all but the last one.
  std::size_t lengthBeforeLast() const { return begin_; }
  std::size_t length() const { return text_.size(); }
  void shorten(std::size_t length) { text_.resize(length); }
  std::string take() { return std::move(text_); }

 private:
  /// Begins the next character. What is left of one that was cut must not run into it: a joiner
  /// or a prefix, which had something else behind it, would make one of the two.
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

/// The first scalar of `text`, which is not empty, made harmless and put behind `out`; its length.
std::size_t addFirst(std::string_view text, bool keepsLineFeeds, BoundedText& out) {
  const Scalar scalar = firstScalar(text);
  if (isHarmless(scalar.value) || (keepsLineFeeds && scalar.value == '\n')) {
    out.add(scalar.value, text.substr(0, scalar.length));
  } else {
    out.add(kReplacementScalar, kReplacement);
  }
  return scalar.length;
}

/// `text` behind what `out` holds already, made harmless; of one that would have more than
/// `mostBytes` in all, as many characters as fit with an ellipsis.
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
