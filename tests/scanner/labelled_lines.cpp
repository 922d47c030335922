#include "scanner/labelled_lines.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "scanner/credentials/credential_mask.h"
#include "scanner/process_scanner.h"
#include "tools/joined.h"

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

/// A key is shown in lines, and told in one.
std::string withoutLineFeeds(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
  return text;
}

}  // namespace

std::vector<LabelledLine> readLabelledLines(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path + ": cannot be read");
  std::vector<LabelledLine> lines;
  std::string text;
  while (std::getline(file, text)) {
    if (text.empty()) continue;
    const auto fields = splitAt(text, '\t');
    try {
      if (fields.size() != 3) throw std::runtime_error("not three fields");
      LabelledLine line{fields[0], {}, StringArray(fields[2]).read(), text};
      if (!fields[1].empty()) line.secrets = splitAt(fields[1], '\x1F');
      lines.push_back(std::move(line));
    } catch (const std::exception& error) {
      throw std::runtime_error(path + ":" + std::to_string(lines.size() + 1) + ": " + error.what());
    }
  }
  return lines;
}

std::map<std::string, MaskFigures> maskFigures(const std::vector<LabelledLine>& lines) {
  std::map<std::string, MaskFigures> figures;
  for (const LabelledLine& line : lines) {
    const std::vector<std::string_view> views(line.arguments.begin(), line.arguments.end());
    const std::string whole = joined(line.arguments);
    const auto shown = CredentialMask::shown(views, whole);
    const std::string arguments = joined(shown.arguments.value_or(line.arguments));
    const auto isShown = [&](const std::string& secret) {
      return withoutLineFeeds(shown.commandLine + arguments).find(secret) != std::string::npos;
    };
    const bool isWrong = line.secrets.empty()
                             ? shown.commandLine != ProcessScanner::redactSecrets(whole)
                             : std::any_of(line.secrets.begin(), line.secrets.end(), isShown);
    MaskFigures& of = figures[line.kind];
    ++of.lines;
    if (!isWrong) continue;
    ++of.wrong;
    of.wrongLines.push_back(line.written + "\n    shown: " + shown.commandLine);
  }
  return figures;
}
