#include "scanner/table_file.h"

#include <stdexcept>

namespace {

/// Reads a JSON array of strings.
class StringArray {
 public:
  explicit StringArray(std::string_view text) : text_(text) {}

  std::vector<std::string> read() {
    std::vector<std::string> strings;
    expect('[');
    while (peek() != ']') {
      strings.push_back(string());
      if (peek() == ',') ++at_;
    }
    return strings;
  }

 private:
  [[noreturn]] static void fail() { throw std::runtime_error("no JSON array of strings"); }

  char next() {
    if (at_ >= text_.size()) fail();
    return text_[at_++];
  }

  char peek() {
    while (at_ < text_.size() && text_[at_] == ' ') ++at_;
    if (at_ >= text_.size()) fail();
    return text_[at_];
  }

  void expect(char c) {
    if (peek() != c) fail();
    ++at_;
  }

  std::string string() {
    expect('"');
    std::string out;
    for (char c = next(); c != '"'; c = next()) {
      if (c == '\\') {
        escape(out);
      } else {
        out += c;
      }
    }
    return out;
  }

  void escape(std::string& out) {
    const char c = next();
    constexpr std::string_view kEscapes = "nrtbf";
    constexpr std::string_view kMeant = "\n\r\t\b\f";
    const auto escape = kEscapes.find(c);
    if (escape != std::string_view::npos) {
      out += kMeant[escape];
    } else if (c == 'u') {
      const unsigned code =
          static_cast<unsigned>(std::stoul(std::string(text_.substr(at_, 4)), nullptr, 16));
      at_ += 4;
      if (code >= 0x800) {
        out += static_cast<char>(0xE0U | code >> 12);
        out += static_cast<char>(0x80U | (code >> 6 & 0x3FU));
        out += static_cast<char>(0x80U | (code & 0x3FU));
      } else if (code >= 0x80) {
        out += static_cast<char>(0xC0U | code >> 6);
        out += static_cast<char>(0x80U | (code & 0x3FU));
      } else {
        out += static_cast<char>(code);
      }
    } else {
      out += c;
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

std::vector<std::string> splitAt(const std::string& text, char between) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  while (true) {
    const auto end = text.find(between, begin);
    parts.push_back(text.substr(begin, end - begin));
    if (end == std::string::npos) return parts;
    begin = end + 1;
  }
}

std::vector<std::string> readStringArray(std::string_view text) {
  return StringArray(text).read();
}
