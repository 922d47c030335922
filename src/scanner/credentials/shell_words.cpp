#include "scanner/credentials/shell_words.h"

#include <algorithm>
#include <array>

#include "text/ascii.h"

namespace credentials {
namespace {

constexpr auto kEndsWord = [] {
  std::array<bool, 256> ends{};
  for (const char c : {' ', '\t', '\n', '\v', '\f', '\r', '|', ';', '&', '(', ')', '<', '>'}) {
    ends[static_cast<unsigned char>(c)] = true;
  }
  return ends;
}();

/// Finds the closing mark of a quotation, and remembers when there is none left.
class Quotations {
 public:
  explicit Quotations(std::string_view text) : text_(text) {}

  std::size_t close(std::size_t open) {
    const char mark = text_[open];
    std::size_t& none = mark == '"' ? noDoubleBehind_ : noSingleBehind_;
    if (open >= none) return std::string_view::npos;
    for (std::size_t i = open + 1; i < text_.size(); ++i) {
      if (text_[i] == '\\' && mark == '"') {
        ++i;
      } else if (text_[i] == mark) {
        return i;
      }
    }
    none = open;
    return std::string_view::npos;
  }

 private:
  std::string_view text_;
  std::size_t noDoubleBehind_ = static_cast<std::size_t>(-1);
  std::size_t noSingleBehind_ = static_cast<std::size_t>(-1);
};

std::size_t wordEnd(std::string_view text, std::size_t at, Quotations& quotations) {
  while (at < text.size() && !kEndsWord[static_cast<unsigned char>(text[at])]) {
    if (text[at] == '\\') {
      at += 2;
      continue;
    }
    if (text[at] == '"' || text[at] == '\'') {
      const std::size_t close = quotations.close(at);
      if (close != std::string_view::npos) at = close;
    }
    ++at;
  }
  return std::min(at, text.size());
}

}  // namespace

void appendShellWords(std::string_view text, std::vector<Word>& words) {
  Quotations quotations(text);
  bool beginsCommand = true;
  bool isBehindPipe = false;
  bool isHereString = false;
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if (kEndsWord[static_cast<unsigned char>(c)]) {
      const bool isRedirection = c == '<' || c == '>';
      if (!text::isWhiteSpace(c) || c == '\n') {
        isHereString = text.substr(at, 3) == "<<<";
        const bool isPipe = c == '|' && text.substr(at, 2) != "||";
        if (!isRedirection) {
          isBehindPipe = isPipe;
          beginsCommand = true;
        }
        at += isHereString ? 3 : text.substr(at, 2) == "||" ? 2 : 1;
      } else {
        ++at;
      }
      continue;
    }
    const std::size_t end = wordEnd(text, at, quotations);
    Word word{text.substr(at, end - at), at, beginsCommand, isBehindPipe, isHereString};
    // "$(command)" and "{ command" begin one too.
    if (word.text == "$" || word.text == "{" || word.text == "then" || word.text == "do" ||
        word.text == "!") {
      at = end;
      continue;
    }
    const char mark = word.text.front();
    if (word.text.size() >= 2 && (mark == '"' || mark == '\'') && word.text.back() == mark) {
      word.text = word.text.substr(1, word.text.size() - 2);
      ++word.begin;
    }
    words.push_back(word);
    // Variables may be set before a command: "A=b command".
    const bool isSetting = beginsCommand && word.text.find('=') != std::string_view::npos &&
                           text::isLetter(word.text.front());
    beginsCommand = isSetting;
    isHereString = false;
    at = end;
  }
}

}  // namespace credentials
