#include "scanner/credentials/value_bounds.h"

#include <algorithm>

namespace credentials {
namespace {

using namespace std::string_view_literals;

/// Characters that may end a value that has no quotation marks around it.
constexpr auto kEndsOfValues = [] {
  std::array<bool, 256> ends{};
  for (const char c : " \t\n\v\f\r&;,\"'`\\})"sv) ends[static_cast<unsigned char>(c)] = true;
  return ends;
}();

bool mayEndValue(char c) {
  return kEndsOfValues[static_cast<unsigned char>(c)];
}

}  // namespace

bool isAssignment(std::string_view word) {
  const std::size_t separator = word.find('=');
  return separator != std::string_view::npos && separator > 0 && separator + 2 < word.size() &&
         std::ranges::all_of(word.substr(0, separator), isNameCharacter);
}

std::size_t ValueBounds::behindOpening(std::size_t value) const {
  while (at(value) == '\\') ++value;
  return isQuote(at(value)) ? value + 1 : value;
}

std::size_t ValueBounds::judgedEnd(std::size_t value) const {
  return endOf(value, value + kLongestLook);
}

std::size_t ValueBounds::end(std::size_t value) const {
  return endOf(value, text_.size());
}

std::size_t ValueBounds::endOf(std::size_t value, std::size_t limit) const {
  limit = std::min(limit, text_.size());
  std::size_t opening = value;
  while (at(opening) == '\\') ++opening;
  if (isQuote(at(opening))) return closing(opening, opening - value, limit);
  const char* const text = text_.data();
  for (std::size_t i = value; i < limit; ++i) {
    const char c = text[i];
    if (!mayEndValue(c)) continue;
    if (text::isWhiteSpace(c) || c == '&' || c == ';') return i;
    if (i > value && isQuote(c) && closes(i)) return i;
    if (c == '\\' && i > value && isQuote(at(i + 1)) && closes(i + 1)) return i;
    if (c == '\\' && at(i + 1) == 'n') return i;
    if (c == ',' && i > value && beginsSetting(i + 1)) return i;
    if ((c == '}' || c == ')') && i > value && endsBracket(i)) return i;
  }
  return limit;
}

std::size_t ValueBounds::closing(std::size_t opening, std::size_t slashes,
                                 std::size_t limit) const {
  const char mark = text_[opening];
  std::size_t run = 0;  // length of the run of backslashes
  for (std::size_t i = opening + 1; i < limit; ++i) {
    if (text_[i] == '\\') {
      ++run;
      continue;
    }
    const bool isEscaped = slashes == 0 ? run % 2 == 1 && mark == '"' : run > slashes;
    if (text_[i] == mark && !isEscaped) return i - (slashes == 0 ? 0 : run);
    run = 0;
  }
  return limit;
}

bool ValueBounds::beginsSetting(std::size_t begin) const {
  constexpr std::size_t kLongestName = 40;
  std::size_t i = begin;
  while (i < begin + kLongestName && i < text_.size() && isNameCharacter(text_[i])) ++i;
  return i > begin && (at(i) == '=' || isQuote(at(i)));
}

bool ValueBounds::endsBracket(std::size_t i) const {
  return i + 1 >= text_.size() || text::isWhiteSpace(text_[i + 1]) || text_[i + 1] == '}' ||
         text_[i + 1] == ';' || text_[i + 1] == ')' || isQuote(text_[i + 1]);
}

bool ValueBounds::closes(std::size_t i) const {
  constexpr std::string_view kBehind = ",;)]}\\";
  return i + 1 >= text_.size() || text::isWhiteSpace(text_[i + 1]) ||
         kBehind.find(text_[i + 1]) != std::string_view::npos || isQuote(text_[i + 1]);
}

}  // namespace credentials
