#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "text/ascii.h"

namespace credentials {

/// Whether it can be part of a name: a letter, a digit, "-", "_" or ".".
inline bool isNameCharacter(char c) {
  static constexpr auto kCharacters = [] {
    std::array<bool, 256> characters{};
    for (int i = 0; i < 128; ++i) {
      const char character = static_cast<char>(i);
      characters[static_cast<std::size_t>(i)] = text::isAlphanumeric(character) ||
                                                character == '-' || character == '_' ||
                                                character == '.';
    }
    return characters;
  }();
  return kCharacters[static_cast<unsigned char>(c)];
}

/// Whether it is a name and its value in one word: "NAME=value".
bool isAssignment(std::string_view word);

constexpr bool isQuote(char c) {
  return c == '"' || c == '\'' || c == '`';
}

/// Whether passwords have it and names do not.
constexpr bool isSpecial(char c) {
  return std::string_view("!#$%^&*~?|;`").find(c) != std::string_view::npos;
}

/// How much of a value is looked at to judge it.
constexpr std::size_t kLongestLook = 160;

/// Finds the ends of values in a text with names and values: a value ends at a blank, at the
/// quotation mark (escaped or not) that closes the one before it, or at the next setting. All
/// places are offsets in the text.
class ValueBounds {
 public:
  explicit ValueBounds(std::string_view text) : text_(text) {}

  /// The character at a place, 0 behind the end of the text.
  char at(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }

  /// The first place from `i` on that is no blank, or the end of the text.
  std::size_t skipBlanks(std::size_t i) const {
    while (i < text_.size() && text::isWhiteSpace(text_[i])) ++i;
    return i;
  }

  /// The value's beginning without its quotation mark, if it has one.
  std::size_t behindOpening(std::size_t value) const;

  /// The end of the value that begins at `value`, where its quotation mark is if it has one.
  std::size_t end(std::size_t value) const;

  /// The same, but at most kLongestLook behind its beginning.
  std::size_t judgedEnd(std::size_t value) const;

  /// The end of the quotation whose mark is at `opening` behind `slashes` backslashes, or `limit`.
  std::size_t closing(std::size_t opening, std::size_t slashes, std::size_t limit) const;

  /// Whether the next setting of a list begins here: "name=".
  bool beginsSetting(std::size_t begin) const;

 private:
  /// As end(), but looks at nothing from `limit` on.
  std::size_t endOf(std::size_t value, std::size_t limit) const;

  /// Whether the bracket at `i` closes one around the value: no part of a word follows it.
  bool endsBracket(std::size_t i) const;

  /// Whether the quotation mark at `i` closes a text, and is not in the middle of a word.
  bool closes(std::size_t i) const;

  std::string_view text_;
};

}  // namespace credentials
