#include "scanner/credentials/credential_value.h"

#include <algorithm>
#include <array>

#include "text/ascii.h"

namespace CredentialValue {

using namespace std::string_view_literals;

bool isPlain(std::string_view value) {
  constexpr std::array kPlain{"true"sv, "false"sv, "yes"sv,  "no"sv,      "on"sv,
                              "off"sv,  "none"sv,  "null"sv, "enabled"sv, "disabled"sv};
  return std::any_of(kPlain.begin(), kPlain.end(),
                     [&](auto plain) { return text::equalsLowered(value, plain); });
}

bool isOption(std::string_view text) {
  if (text.size() < 2 || text[0] != '-') return false;
  constexpr std::size_t kLongestShortOption = 4;
  if (text[1] == '-') return text.size() == 2 || text::isLetter(text[2]);
  return text::isLetter(text[1]) && text.size() <= kLongestShortOption;
}

bool isScheme(std::string_view word) {
  constexpr std::array kSchemes{"apikey"sv, "basic"sv, "bearer"sv, "digest"sv, "token"sv};
  return std::any_of(kSchemes.begin(), kSchemes.end(),
                     [&](auto scheme) { return text::equalsLowered(word, scheme); });
}

bool looksEncoded(std::string_view text) {
  if (text.size() < 8 || text.size() % 4 != 0) return false;
  const auto isSign = [](char c) {
    return text::isAlphanumeric(c) || c == '+' || c == '/' || c == '=';
  };
  return std::all_of(text.begin(), text.end(), isSign) &&
         std::any_of(text.begin() + 1, text.end(), [](char c) { return !text::isLower(c); });
}

}  // namespace CredentialValue
