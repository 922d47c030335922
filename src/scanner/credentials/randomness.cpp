#include "scanner/credentials/randomness.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/ascii.h"

namespace credentials {
namespace {

constexpr std::size_t kShortestRandom = 20;
/// Random text is random from its beginning, so no more than this is looked at.
constexpr std::size_t kLongestJudged = 128;

/// For each letter, the letters that often follow it in names and words. In the names of files,
/// functions and manuals of a Linux system 93 % of all pairs are such pairs; of random letters, 46
/// %.
constexpr std::array<std::string_view, 26> kFollowing{"bcdfgiklmnprstuvwxy",
                                                      "aeijlorsuy",
                                                      "acdehiklmoprstu",
                                                      "abcdefgilmoprstu",
                                                      "abcdefghilmnopqrstuvwxyz",
                                                      "aefilorstu",
                                                      "aehilnorstu",
                                                      "aeiort",
                                                      "abcdefglmnoprstvxz",
                                                      "e",
                                                      "aeis",
                                                      "acdefgiloprstuvy",
                                                      "abcdeilmopsu",
                                                      "acdefgiklmnoprstuv",
                                                      "abcdfgiklmnoprstuvw",
                                                      "acdehiloprstuy",
                                                      "u",
                                                      "abcdefgiklmnoprstuvy",
                                                      "acdefhiklmnoprstuy",
                                                      "abcdefhiklmnoprstuvwy",
                                                      "abcdefgilmnprst",
                                                      "aeio",
                                                      "aeior",
                                                      "ceimpst",
                                                      "lmnpst",
                                                      "e"};

using Row = std::array<bool, 26>;

/// For each two letters, whether the second rarely follows the first.
constexpr auto kSeldom = [] {
  std::array<Row, 26> seldom{};
  for (std::size_t first = 0; first != seldom.size(); ++first) {
    for (std::size_t second = 0; second != seldom.size(); ++second) {
      seldom[first][second] =
          kFollowing[first].find(static_cast<char>('a' + second)) == std::string_view::npos;
    }
  }
  return seldom;
}();

bool isSeldom(char first, char second) {
  return kSeldom[static_cast<std::size_t>(text::asciiLower(first) - 'a')]
                [static_cast<std::size_t>(text::asciiLower(second) - 'a')];
}

/// The figures by which a random text is told from a name.
struct Mixture {
  std::size_t upper = 0;
  std::size_t lower = 0;
  std::size_t digits = 0;
  std::size_t pairs = 0;        // neighbouring letters and digits
  std::size_t strange = 0;      // pairs that names do not have
  std::size_t longestWord = 0;  // run of letters and digits
};

Mixture mixtureOf(std::string_view text) {
  Mixture mixture;
  std::size_t word = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (!text::isAlphanumeric(c)) {
      word = 0;
      continue;
    }
    mixture.upper += text::isUpper(c);
    mixture.lower += text::isLower(c);
    mixture.digits += text::isDigit(c);
    mixture.longestWord = std::max(mixture.longestWord, ++word);
    if (word < 2 || (text::isDigit(c) && text::isDigit(text[i - 1]))) continue;
    ++mixture.pairs;
    mixture.strange += text::isDigit(c) || text::isDigit(text[i - 1]) || isSeldom(text[i - 1], c);
  }
  return mixture;
}

bool isRandom(const Mixture& mixture) {
  if (mixture.pairs < 10) return false;
  const std::size_t percent = mixture.strange * 100 / mixture.pairs;
  if (mixture.upper >= 2 && mixture.lower >= 2) {
    // Text without digits needs more strange pairs, because "MACHINERYxyz…" has some too.
    return mixture.digits >= 2 ? percent >= 40 && mixture.longestWord >= 6
                               : percent >= 42 && mixture.longestWord >= kShortestRandom;
  }
  return mixture.digits >= 3 && mixture.longestWord >= kShortestRandom && percent >= 40;
}

void add(const Mixture& word, Mixture& mixture) {
  mixture.upper += word.upper;
  mixture.lower += word.lower;
  mixture.digits += word.digits;
  mixture.pairs += word.pairs;
  mixture.strange += word.strange;
  mixture.longestWord = std::max(mixture.longestWord, word.longestWord);
}

/// The same without long hexadecimal words, which may be sums, UUIDs or ids of containers and
/// prove nothing.
Mixture mixtureWithoutNumbers(std::string_view text) {
  constexpr std::size_t kShortestNumber = 8;
  Mixture mixture;
  for (std::size_t begin = 0; begin < text.size();) {
    std::size_t end = begin;
    bool isHex = true;
    for (; end < text.size() && text::isAlphanumeric(text[end]); ++end) {
      isHex = isHex && text::isHexDigit(text[end]);
    }
    if (!isHex || end - begin < kShortestNumber) {
      add(mixtureOf(text.substr(begin, end - begin)), mixture);
    }
    begin = end + 1;
  }
  return mixture;
}

}  // namespace

bool looksRandom(std::string_view text) {
  if (text.size() < kShortestRandom) return false;
  text = text.substr(0, kLongestJudged);
  return isRandom(mixtureOf(text)) && isRandom(mixtureWithoutNumbers(text));
}

bool looksGenerated(std::string_view text) {
  constexpr std::size_t kShortest = 10;
  if (text.size() < kShortest || text.size() > kLongestJudged ||
      !std::ranges::all_of(text, text::isAlphanumeric)) {
    return false;
  }
  const Mixture mixture = mixtureOf(text);
  return mixture.upper > 0 && mixture.lower > 0 && mixture.digits > 0 && mixture.pairs >= 7 &&
         mixture.strange * 2 >= mixture.pairs;
}

bool isLongHexNumber(std::string_view text) {
  if (text.starts_with("0x")) text.remove_prefix(2);
  constexpr std::size_t kShortest = 32;
  const auto isPart = [](char c) { return text::isHexDigit(c) || c == '-'; };
  return text.size() >= kShortest && text.size() <= kLongestJudged * 2 &&
         std::ranges::all_of(text, isPart) && std::ranges::count(text, '-') <= 4;
}

}  // namespace credentials
