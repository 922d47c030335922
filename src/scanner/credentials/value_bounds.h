#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "text/ascii.h"

namespace credentials {

/// Whether names go on with it: a letter, a digit, "-", "_" or ".".
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

/// Whether a quotation may stand between two of them.
constexpr bool isQuote(char c) {
  return c == '"' || c == '\'' || c == '`';
}

/// How far is looked to judge a value.
constexpr std::size_t kLongestLook = 160;

/// Where values end in a text that holds names and values: at a blank, at the quotation mark
/// that closes the one before it, escaped or not, at the next setting. All places are those of
/// characters in the text.
class ValueBounds {
 public:
  explicit ValueBounds(std::string_view text) : text_(text) {}

  /// Where the value itself begins: behind the quotation mark, if there is one.
  std::size_t behindOpening(std::size_t value) const;

  /// The end of the value that begins, with its quotation mark, at `value`.
  std::size_t end(std::size_t value) const;

  /// The same, but at most kLongestLook behind its beginning.
  std::size_t judgedEnd(std::size_t value) const;

  /// Where the quotation ends that opened at `opening` behind so many backslashes, or `limit`.
  std::size_t closing(std::size_t opening, std::size_t slashes, std::size_t limit) const;

  /// Whether the next setting of a list begins here: "name=".
  bool beginsSetting(std::size_t begin) const;

 private:
  char at(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }

  /// Nothing from `limit` on is looked at.
  std::size_t endOf(std::size_t value, std::size_t limit) const;

  /// Whether a bracket ends what is around the value: nothing of a word follows.
  bool endsBracket(std::size_t i) const;

  /// Whether the quotation mark at `i` ends a text rather than going on in the same word.
  bool closes(std::size_t i) const;

  std::string_view text_;
};

}  // namespace credentials
