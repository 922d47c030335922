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

bool endsWord(char c) {
  return kEndsWord[static_cast<unsigned char>(c)];
}

/// Words after which a new command begins: "$(command)", "then command".
bool leadsToCommand(std::string_view word) {
  return word == "$" || word == "{" || word == "then" || word == "do" || word == "!";
}

}  // namespace

bool ShellWords::next(Word& word) {
  while (at_ < text_.size()) {
    if (endsWord(text_[at_])) {
      takeSeparator();
      continue;
    }
    const std::size_t end = wordEnd(at_);
    word = {text_.substr(at_, end - at_), at_, beginsCommand_, isBehindPipe_, isHereString_};
    at_ = end;
    if (leadsToCommand(word.text)) continue;
    const char mark = word.text.front();
    if (word.text.size() >= 2 && (mark == '"' || mark == '\'') && word.text.back() == mark) {
      word.text = word.text.substr(1, word.text.size() - 2);
      ++word.begin;
    }
    // Assignments may come before a command: "A=b command".
    const bool isSetting = word.text.find('=') != std::string_view::npos && !word.text.empty() &&
                           text::isLetter(word.text.front());
    beginsCommand_ = beginsCommand_ && isSetting;
    isHereString_ = false;
    return true;
  }
  return false;
}

void ShellWords::takeSeparator() {
  const char c = text_[at_];
  if (text::isWhiteSpace(c) && c != '\n') {
    ++at_;
    return;
  }
  constexpr std::string_view kHereString = "<<<";
  isHereString_ = text_.substr(at_, kHereString.size()) == kHereString;
  const bool isDouble = text_.substr(at_, 2) == "||";
  if (c != '<' && c != '>') {
    isBehindPipe_ = c == '|' && !isDouble;
    beginsCommand_ = true;
  }
  at_ += isHereString_ ? kHereString.size() : isDouble ? 2 : 1;
}

std::size_t ShellWords::wordEnd(std::size_t at) {
  while (at < text_.size() && !endsWord(text_[at])) {
    if (text_[at] == '\\') {
      at += 2;
      continue;
    }
    if (text_[at] == '"' || text_[at] == '\'') {
      const std::size_t close = closing(at);
      if (close != std::string_view::npos) at = close;
    }
    ++at;
  }
  return std::min(at, text_.size());
}

std::size_t ShellWords::closing(std::size_t open) {
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

}  // namespace credentials
