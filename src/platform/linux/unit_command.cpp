#include "platform/linux/unit_command.h"

#include <utf8proc.h>

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "text/scalar.h"
#include "text/unicode.h"

namespace platform {
namespace {

constexpr std::string_view kCommandBlanks = " \t\r\n";

bool isBlank(char byte) {
  return kCommandBlanks.find(byte) != std::string_view::npos;
}

/// The byte that a letter behind a backslash stands for, if any.
std::optional<char> simpleEscape(char letter) {
  constexpr std::string_view kLetters = "abfnrtvs\\\"'";
  constexpr std::string_view kMeanings = "\a\b\f\n\r\t\v \\\"'";
  const auto index = kLetters.find(letter);
  if (index == std::string_view::npos) return std::nullopt;
  return kMeanings[index];
}

/// The number in the first `count` characters of `text`, which must all be digits. Never 0,
/// because a word can't hold a NUL.
std::optional<std::uint32_t> numberOf(std::string_view text, std::size_t count, int base) {
  if (text.size() < count) return std::nullopt;
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + count, number, base);
  if (error != std::errc() || end != text.data() + count || number == 0) return std::nullopt;
  return number;
}

/// Appends what the escape behind a backslash stands for and returns its length in bytes; 0 when
/// it is no escape, so that the backslash is an ordinary character.
std::size_t appendEscape(std::string_view text, std::string& word) {
  if (text.empty()) return 0;
  if (const auto simple = simpleEscape(text.front())) {
    word += *simple;
    return 1;
  }
  struct Form {
    char letter;
    std::size_t digits;
  };
  for (const auto form : {Form{'x', 2}, Form{'u', 4}, Form{'U', 8}}) {
    if (text.front() != form.letter) continue;
    const auto number = numberOf(text.substr(1), form.digits, 16);
    if (!number ||
        (form.letter != 'x' && !utf8proc_codepoint_valid(static_cast<utf8proc_int32_t>(*number)))) {
      return 0;
    }
    if (form.letter == 'x') {
      word += static_cast<char>(*number);
    } else {
      text::appendScalar(*number, word);
    }
    return 1 + form.digits;
  }
  constexpr std::size_t kOctalDigits = 3;
  if (const auto octal = numberOf(text, kOctalDigits, 8); octal && *octal <= 0xff) {
    word += static_cast<char>(*octal);
    return kOctalDigits;
  }
  return 0;
}

/// Moves the first word of `text`, which must not begin with a blank, to `word`. False when a
/// quote is not closed.
bool takeWord(std::string_view& text, std::string& word) {
  char quote = '\0';
  while (!text.empty()) {
    const char byte = text.front();
    if (quote == '\0' && isBlank(byte)) return true;
    text.remove_prefix(1);
    if (byte == '\\') {
      const std::size_t length = appendEscape(text, word);
      if (length == 0) word += byte;
      text.remove_prefix(length);
    } else if (byte == quote) {
      quote = '\0';
    } else if (quote == '\0' && (byte == '"' || byte == '\'')) {
      quote = byte;
    } else {
      word += byte;
    }
  }
  return quote == '\0';
}

/// Whether `text` begins with the word `word`, as written.
bool beginsWithWord(std::string_view text, std::string_view word) {
  return text.starts_with(word) && (text.size() == word.size() || isBlank(text[word.size()]));
}

}  // namespace

std::optional<std::vector<std::string>> commandWords(std::string_view value) {
  std::vector<std::string> words;
  bool isCommand = true;
  for (;;) {
    value.remove_prefix(std::min(value.find_first_not_of(kCommandBlanks), value.size()));
    if (value.empty() || beginsWithWord(value, ";")) return words;
    if (beginsWithWord(value, "\\;")) value.remove_prefix(1);

    std::string word;
    if (!takeWord(value, word)) return std::nullopt;
    if (isCommand) word.erase(0, std::min(word.find_first_not_of("-@:+!"), word.size()));
    if (text::isUtf8(word) && !(isCommand && word.empty())) words.push_back(std::move(word));
    isCommand = false;
  }
}

}  // namespace platform
