#include "text/json_writer.h"

#include <cmath>

#include "text/format.h"
#include "text/scalar.h"

namespace text {
namespace {

void appendEscaped(std::string& out, char32_t unit) {
  out += format("\\u%04x", static_cast<unsigned>(unit));
}

}  // namespace

JsonWriter& JsonWriter::begin(char bracket) {
  separate();
  text_ += bracket;
  return *this;
}

JsonWriter& JsonWriter::end(char bracket) {
  text_ += bracket;
  return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
  separate();
  quote(name);
  text_ += ':';
  return *this;
}

JsonWriter& JsonWriter::value(std::string_view string) {
  separate();
  quote(string);
  return *this;
}

JsonWriter& JsonWriter::value(double number) {
  if (!std::isfinite(number)) return write("null");
  return write(format("%.15g", number));
}

JsonWriter& JsonWriter::write(std::string_view token) {
  separate();
  text_ += token;
  return *this;
}

/// Puts a comma before all that does not come first in its object or array, or right after a key.
void JsonWriter::separate() {
  constexpr std::string_view kNothingBefore = "{[:";
  if (!text_.empty() && kNothingBefore.find(text_.back()) == std::string_view::npos) text_ += ',';
}

void JsonWriter::quote(std::string_view string) {
  constexpr char32_t kReplacementCharacter = 0xFFFD;
  constexpr char32_t kFirstOfTwoUnits = 0x10000;
  text_ += '"';
  while (!string.empty()) {
    const Scalar scalar = firstScalar(string);
    const char32_t value =
        scalar.value < 0 ? kReplacementCharacter : static_cast<char32_t>(scalar.value);
    if (value == U'"' || value == U'\\') {
      text_ += '\\';
      text_ += static_cast<char>(value);
    } else if (value >= 0x20 && value < 0x7F) {
      text_ += static_cast<char>(value);
    } else if (value < kFirstOfTwoUnits) {
      appendEscaped(text_, value);
    } else {
      appendEscaped(text_, 0xD800 + ((value - kFirstOfTwoUnits) >> 10));
      appendEscaped(text_, 0xDC00 + ((value - kFirstOfTwoUnits) & 0x3FF));
    }
    string.remove_prefix(scalar.length);
  }
  text_ += '"';
}

}  // namespace text
