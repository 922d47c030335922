#include "scanner/credentials/token_formats.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "scanner/credentials/randomness.h"
#include "scanner/credentials/token_format_table.h"
#include "scanner/credentials/trie.h"
#include "text/ascii.h"

namespace credentials {
namespace {

/// Which alphabets a character is of, as bits.
constexpr auto kAlphabets = [] {
  std::array<std::uint16_t, 256> characters{};
  for (int i = 0; i < 128; ++i) {
    const char c = static_cast<char>(i);
    const auto add = [&](Alphabet alphabet, bool isOf) {
      if (isOf) characters[static_cast<std::size_t>(i)] |= static_cast<std::uint16_t>(alphabet);
    };
    add(Alphabet::digits, text::isDigit(c));
    add(Alphabet::hex, text::isHexDigit(c));
    add(Alphabet::uuid, text::isHexDigit(c) || c == '-');
    add(Alphabet::capitals, text::isUpper(c) || text::isDigit(c));
    add(Alphabet::capitalParts, text::isUpper(c) || text::isDigit(c) || c == '-');
    add(Alphabet::smalls, text::isLower(c) || text::isDigit(c));
    add(Alphabet::letters, text::isAlphanumeric(c));
    add(Alphabet::urlSafe, text::isAlphanumeric(c) || c == '-' || c == '_');
    add(Alphabet::dotted, text::isAlphanumeric(c) || c == '-' || c == '_' || c == '.');
    add(Alphabet::base64,
        text::isAlphanumeric(c) || c == '+' || c == '/' || c == '=' || c == '-' || c == '_');
    add(Alphabet::path, text::isAlphanumeric(c) || c == '-' || c == '_' || c == '/' || c == '.' ||
                            c == '@' || c == '%' || c == ':');
    add(Alphabet::any, text::isAlphanumeric(c) || c == '-' || c == '_' || c == '.' || c == '$' ||
                           c == '!' || c == '~' || c == '=' || c == '+' || c == '/');
  }
  return characters;
}();

bool isOf(char c, Alphabet alphabet) {
  return (kAlphabets[static_cast<unsigned char>(c)] & static_cast<std::uint16_t>(alphabet)) != 0;
}

std::size_t lengthOf(std::string_view text, Alphabet alphabet) {
  std::size_t length = 0;
  while (length < text.size() && isOf(text[length], alphabet)) ++length;
  return length;
}

const Trie& prefixes() {
  static const Trie tree = [] {
    std::vector<std::string_view> keys;
    keys.reserve(std::size(kFormats));
    for (const Format& format : kFormats) keys.push_back(format.prefix);
    return Trie(keys);
  }();
  return tree;
}

/// A small number for three characters; different ones may have the same.
constexpr std::size_t tripleOf(char first, char second, char third) {
  constexpr auto five = [](char c) { return static_cast<std::size_t>(c) & 31U; };
  return five(first) << 10U | five(second) << 5U | five(third);
}

using Triples = std::bitset<std::size_t{1} << 15U>;

/// The first three characters of all credentials, by which most words can be skipped at once.
const Triples& beginnings() {
  static const Triples triples = [] {
    Triples made;
    made.set(tripleOf('e', 'y', 'J'));
    for (const Format& format : kFormats) {
      const std::string_view prefix = format.prefix;
      if (prefix.size() > 2) {
        made.set(tripleOf(prefix[0], prefix[1], prefix[2]));
        continue;
      }
      for (int third = 0; third < 32; ++third) {
        made.set(tripleOf(prefix[0], prefix[1], static_cast<char>(third)));
      }
    }
    return made;
  }();
  return triples;
}

/// Whether the word is too odd to be a name: long, or with many digits or changes of case.
bool isOddWord(std::string_view word) {
  if (word.size() >= 16) return true;
  const auto digits = std::ranges::count_if(word, text::isDigit);
  if (word.size() >= 6 && digits >= 3) return true;
  int changes = 0;
  for (std::size_t i = 1; i < word.size(); ++i)
    changes += text::isLower(word[i - 1]) && text::isUpper(word[i]);
  return word.size() >= 8 && changes >= 3;
}

/// Whether one of the words that other characters split the text into looks odd.
bool holdsOddWord(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = lengthOf(text, Alphabet::letters);
    if (isOddWord(text.substr(0, length))) return true;
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  return false;
}

/// Tries each place of one text. What was looked through in vain is not looked through
/// again from a later place, where the same characters would be fewer.
class FormatSearch {
 public:
  FormatSearch(std::string_view text, std::vector<TextSpan>& found) : text_(text), found_(found) {}

  void run() {
    // Nearly all of a text is skipped in this loop, so it does as little as possible.
    const char* const text = text_.data();
    const std::size_t size = text_.size();
    std::size_t at = 0;
    std::size_t word = 0;  // the beginning of the run of letters and digits before this place
    while (at < size) {
      const char c = text[at];
      std::size_t end = 0;
      if (isOf(c, Alphabet::letters)) {
        word = at;
        end = endOfKeyAt(at);
        if (end == 0 && isEscaped(at)) end = endOfKeyAt(at + 2);
        if (end == 0) {
          while (at < size && isOf(text[at], Alphabet::letters)) ++at;
          takeEnd(word, at);
          continue;
        }
      } else if (c == '-' && at + 1 < size && text[at + 1] == '-') {
        end = privateKeyEnd(at);
      } else if (at > word && (c == '.' || c == ':' || c == '-' || c == '_' || c == '~')) {
        end = endAroundMiddle(at);
      }
      at = end > at ? end : at + 1;
      word = at;
    }
  }

 private:
  char at(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }

  /// The end of the credential that begins here, or 0.
  std::size_t endOfKeyAt(std::size_t begin) {
    if (begin + 2 >= text_.size()) return 0;
    const char* const text = text_.data() + begin;
    if (!beginnings_[tripleOf(text[0], text[1], text[2])]) return 0;
    // Few words begin like a credential. Only somebody who wants to slow the search down has so
    // many, so the rest is masked.
    constexpr int kMostAttempts = 4000;
    if (++attempts_ > kMostAttempts) return add(begin, text_.size());
    const std::size_t length = lengthAt(begin);
    return length > 0 ? begin + length : 0;
  }

  /// Whether the word begins with the digits of an escape: "%20eyJ…".
  bool isEscaped(std::size_t begin) const {
    return begin > 0 && text_[begin - 1] == '%' && text::isHexDigit(text_[begin]) &&
           text::isHexDigit(at(begin + 1));
  }

  void takeEnd(std::size_t begin, std::size_t end) {
    constexpr std::size_t kShortest = 34;
    if (end - begin < kShortest) return;
    for (const EndFormat& format : kEndFormats) {
      const std::size_t length = end - begin;
      if (length < format.least || length > format.most) continue;
      const std::size_t mark = end - format.behind - format.mark.size();
      if (text_.substr(mark, format.mark.size()) == format.mark) add(begin, end);
    }
  }

  std::size_t add(std::size_t begin, std::size_t end) {
    found_.push_back({begin, withPartner(end)});
    return found_.back().end;
  }

  /// "id:secret": what follows a key and ":" in the same word belongs to it.
  std::size_t withPartner(std::size_t end) const {
    if (at(end) != ':') return end;
    constexpr std::size_t kShortest = 20;
    const std::size_t length = lengthOf(text_.substr(end + 1), Alphabet::base64);
    return length >= kShortest ? end + 1 + length : end;
  }

  /// The length of the credential that begins at `begin`, or 0.
  std::size_t lengthAt(std::size_t begin) {
    const Trie& tree = prefixes();
    Trie::Node node = Trie::kRoot;
    std::size_t best = 0;
    for (std::size_t i = begin; i < text_.size(); ++i) {
      node = tree.next(node, text_[i]);
      if (node == Trie::kNowhere) break;
      const int key = tree.keyAt(node);
      if (key != Trie::kNoKey) {
        best = std::max(best, keyLength(begin, kFormats[static_cast<std::size_t>(key)]));
      }
    }
    if (best == 0) best = webTokenLength(begin);
    return best > 0 ? add(begin, begin + best) - begin : 0;
  }

  std::size_t keyLength(std::size_t begin, const Format& format) {
    const auto alphabet = static_cast<std::size_t>(format.alphabet);
    std::size_t& passed = passed_[static_cast<std::size_t>(__builtin_ctzl(alphabet))];
    if (format.mustLookOdd && begin < passed) return 0;
    std::string_view body = text_.substr(begin + format.prefix.size());
    body = body.substr(0, lengthOf(body, format.alphabet));
    const std::size_t length = format.prefix.size() + body.size();
    const bool isRight = body.size() >= format.shortest &&
                         (format.longest == kAnyLength || body.size() <= format.longest);
    if (isRight && (!format.mustLookOdd || holdsOddWord(body))) return length;
    // Do not skip a longer body: its words may begin another credential.
    if (format.mustLookOdd && format.longest == kAnyLength) passed = begin + length;
    return 0;
  }

  /// Header, payload and signature of a JSON web token (five parts when it is encrypted).
  std::size_t webTokenLength(std::size_t begin) {
    if (text_.substr(begin, 3) != "eyJ" || begin < noWebTokenBefore_) return 0;
    std::size_t end = begin;
    int parts = 0;
    while (true) {
      const std::size_t part = lengthOf(text_.substr(end), Alphabet::urlSafe);
      end += part;
      parts += part > 0;
      if (at(end) != '.') break;
      ++end;
    }
    if (parts >= 3) return end - begin;
    noWebTokenBefore_ = end;
    return 0;
  }

  /// The end of the private key that begins here: what is between its first and last line is
  /// added.
  std::size_t privateKeyEnd(std::size_t begin) {
    constexpr std::string_view kBegin = "-----BEGIN ";
    constexpr std::string_view kDashes = "-----";
    constexpr std::size_t kLongestTitle = 60;
    if (text_.substr(begin, kBegin.size()) != kBegin) return 0;
    const std::string_view title = text_.substr(begin + kBegin.size(), kLongestTitle);
    const std::size_t titleEnd = title.find(kDashes);
    if (titleEnd == std::string_view::npos ||
        title.substr(0, titleEnd).find("PRIVATE KEY") == std::string_view::npos) {
      return 0;
    }
    std::size_t body = begin + kBegin.size() + titleEnd + kDashes.size();
    while (text::isWhiteSpace(at(body))) ++body;
    std::size_t end = std::min(text_.find("-----END ", body), text_.size());
    while (end > body && text::isWhiteSpace(text_[end - 1])) --end;
    if (end > body) found_.push_back({body, end});
    return end;
  }

  /// How many characters of the alphabet there are directly before `end`, counting to `most` at
  /// most.
  std::size_t lengthBefore(std::size_t end, Alphabet alphabet, std::size_t most) const {
    std::size_t length = 0;
    while (length < most && length < end && isOf(text_[end - 1 - length], alphabet)) ++length;
    return length;
  }

  /// The end of a key that is recognised by something in its middle or at its end, or 0.
  std::size_t endAroundMiddle(std::size_t middle) {
    const std::size_t word = lengthBefore(middle, Alphabet::letters, 33);
    if (word < 3) return 0;
    for (const MiddleFormat& format : kMiddleFormats) {
      if (text_[middle] != format.middle[0] ||
          text_.substr(middle, format.middle.size()) != format.middle) {
        continue;
      }
      if (format.before == Alphabet::hex && word < format.leastBefore) continue;
      if (format.lastBefore != '\0' && text_[middle - 1] != format.lastBefore) continue;
      const std::size_t before =
          lengthBefore(middle, format.before, std::size_t{format.mostBefore} + 1);
      if (before < format.leastBefore || before > format.mostBefore) continue;
      const std::size_t behind = middle + format.middle.size();
      const std::size_t after =
          lengthOf(text_.substr(behind, std::size_t{format.mostAfter} + 1), format.after);
      if (after < format.leastAfter || after > format.mostAfter) continue;
      const std::size_t begin = middle - before;
      if (!found_.empty() && found_.back().end > begin) continue;
      if (format.mustLookRandom && !looksRandom(text_.substr(begin, behind + after - begin))) {
        continue;
      }
      return add(begin, behind + after);
    }
    return 0;
  }

  const Triples& beginnings_ = beginnings();
  std::string_view text_;
  std::vector<TextSpan>& found_;
  std::array<std::size_t, 16> passed_{};  // by alphabet: before here there is no odd word
  std::size_t noWebTokenBefore_ = 0;
  int attempts_ = 0;
};

}  // namespace

void appendTokens(std::string_view text, std::vector<TextSpan>& found) {
  constexpr std::size_t kShortest = 7;  // "ghp_abc"
  if (text.size() < kShortest) return;
  std::vector<TextSpan> own;
  FormatSearch(text, own).run();
  found.insert(found.end(), own.begin(), own.end());
}

}  // namespace credentials
