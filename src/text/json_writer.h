#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace text {

/// Writes a JSON value piece by piece, on one line and in ASCII alone: every other character, and
/// whatever could steer a terminal, is written as its code (`\\u` and four digits). Members come
/// out in the order in which they were written. What was begun is to be ended by the caller.
class JsonWriter {
 public:
  JsonWriter& beginObject() { return begin('{'); }
  JsonWriter& endObject() { return end('}'); }
  JsonWriter& beginArray() { return begin('['); }
  JsonWriter& endArray() { return end(']'); }
  /// The name of the member that comes next.
  JsonWriter& key(std::string_view name);

  /// Bytes that are not UTF-8 are written as U+FFFD.
  JsonWriter& value(std::string_view string);
  JsonWriter& value(const char* string) { return value(std::string_view(string)); }
  JsonWriter& value(bool flag) { return write(flag ? "true" : "false"); }
  /// With 15 digits; null when it is not finite.
  JsonWriter& value(double number);
  JsonWriter& value(std::integral auto number) { return write(std::to_string(number)); }
  /// null when there is none.
  template <typename Value>
  JsonWriter& value(const std::optional<Value>& maybe) {
    return maybe ? value(*maybe) : write("null");
  }

  template <typename Value>
  JsonWriter& member(std::string_view name, const Value& value) {
    return key(name).value(value);
  }

  /// What was written so far.
  const std::string& text() const { return text_; }

 private:
  JsonWriter& begin(char bracket);
  JsonWriter& end(char bracket);
  JsonWriter& write(std::string_view token);
  void separate();
  void quote(std::string_view string);

  std::string text_;
};

}  // namespace text
