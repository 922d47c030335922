#include "scanner/credentials/credential_shapes.h"

#include <algorithm>
#include <array>

#include "text/ascii.h"

namespace {

bool isUpperOrDigit(char c) {
  return text::isUpper(c) || text::isDigit(c);
}
bool isUrlSafe(char c) {
  return text::isAlphanumeric(c) || c == '-' || c == '_';
}

/// What follows the prefix: of which signs, and how many there must be at least. Prefixes
/// that begin ordinary names as well need a body that nobody would choose as a name.
struct Shape {
  std::string_view prefix;
  bool (*belongs)(char);
  std::size_t minLength;
  bool mustLookRandom = false;
};

constexpr Shape kShapes[] = {
    {"sk-ant-", isUrlSafe, 3},
    {"sk-", isUrlSafe, 6, true},
    {"hf_", text::isAlphanumeric, 6, true},
    {"github_pat_", isUrlSafe, 3},
    {"ghp_", isUrlSafe, 3},
    {"gho_", isUrlSafe, 8},
    {"ghu_", isUrlSafe, 8},
    {"ghs_", isUrlSafe, 8},
    {"ghr_", isUrlSafe, 8},
    {"glpat-", isUrlSafe, 3},
    {"xoxb-", isUrlSafe, 3},
    {"xoxa-", isUrlSafe, 3},
    {"xoxe-", isUrlSafe, 3},
    {"xoxp-", isUrlSafe, 3},
    {"xoxr-", isUrlSafe, 3},
    {"xoxs-", isUrlSafe, 3},
    {"xapp-", isUrlSafe, 20},
    {"AKIA", isUpperOrDigit, 8},
    {"ASIA", isUpperOrDigit, 16},
    {"AIza", isUrlSafe, 30},
    {"gsk_", isUrlSafe, 20},
    {"lsv2_", isUrlSafe, 20},
    {"npm_", text::isAlphanumeric, 20},
    {"nvapi-", isUrlSafe, 20},
    {"pplx-", isUrlSafe, 20},
    {"r8_", text::isAlphanumeric, 20},
    {"rk_live_", isUrlSafe, 8},
    {"sk_live_", isUrlSafe, 8},
    {"sk_test_", isUrlSafe, 8},
    {"xai-", isUrlSafe, 20},
};

/// The first signs of all shapes, so that most places are passed over at once.
constexpr auto kBegins = [] {
  std::array<bool, 256> begins{};
  for (const Shape& shape : kShapes) begins[static_cast<unsigned char>(shape.prefix[0])] = true;
  begins['e'] = true;
  return begins;
}();

std::size_t lengthOf(std::string_view text, bool (*belongs)(char)) {
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), belongs) -
                                  text.begin());
}

/// Whether nobody would call anything by this word: long, or full of digits or of changes
/// of case.
bool looksRandom(std::string_view word) {
  if (word.size() >= 16) return true;
  const auto digits = std::count_if(word.begin(), word.end(), text::isDigit);
  if (word.size() >= 6 && digits >= 3) return true;
  int changes = 0;
  for (std::size_t i = 1; i < word.size(); ++i)
    changes += text::isLower(word[i - 1]) && text::isUpper(word[i]);
  return word.size() >= 8 && changes >= 3;
}

/// Whether one of the words that "-" and "_" split the text into looks random.
bool holdsRandomWord(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = lengthOf(text, text::isAlphanumeric);
    if (looksRandom(text.substr(0, length))) return true;
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  return false;
}

/// Whether a credential may begin at `at`: not inside a word, unless an escape ends there
/// ("%20eyJ…").
bool mayBeginAt(std::string_view text, std::size_t at) {
  if (at == 0 || !text::isAlphanumeric(text[at - 1])) return true;
  return at >= 3 && text[at - 3] == '%' && text::isHexDigit(text[at - 2]) &&
         text::isHexDigit(text[at - 1]);
}

/// Tries each place of one text. What was looked through in vain is not looked through
/// again from a later place, where the same signs would be fewer.
class Search {
 public:
  explicit Search(std::string_view text) : text_(text) {}

  /// The length of the credential that begins at `at`, or 0.
  std::size_t lengthAt(std::size_t at) {
    for (const Shape& shape : kShapes) {
      if (const std::size_t length = keyLength(at, shape)) return length;
    }
    return webTokenLength(at);
  }

 private:
  std::size_t keyLength(std::size_t at, const Shape& shape) {
    std::string_view body = text_.substr(at);
    if (body.substr(0, shape.prefix.size()) != shape.prefix) return 0;
    if (shape.mustLookRandom && shape.belongs == isUrlSafe && at < noRandomWordBefore_) return 0;
    body = body.substr(shape.prefix.size());
    body = body.substr(0, lengthOf(body, shape.belongs));
    const std::size_t length = shape.prefix.size() + body.size();
    if (shape.mustLookRandom && !holdsRandomWord(body)) {
      // The words of a longer body may hold the beginning of another credential.
      if (shape.belongs == isUrlSafe) noRandomWordBefore_ = at + length;
      return 0;
    }
    return body.size() < shape.minLength ? 0 : length;
  }

  /// Header, payload and signature of a JSON web token (five parts when it is encrypted).
  std::size_t webTokenLength(std::size_t at) {
    if (text_.substr(at, 3) != "eyJ" || at < noWebTokenBefore_) return 0;
    std::size_t end = at;
    int parts = 0;
    while (true) {
      const std::size_t part = lengthOf(text_.substr(end), isUrlSafe);
      end += part;
      parts += part > 0;
      if (end >= text_.size() || text_[end] != '.') break;
      ++end;
    }
    if (parts >= 3) return end - at;
    noWebTokenBefore_ = end;
    return 0;
  }

  std::string_view text_;
  std::size_t noRandomWordBefore_ = 0;
  std::size_t noWebTokenBefore_ = 0;
};

}  // namespace

void appendCredentialShapes(std::string_view text, std::vector<TextSpan>& found) {
  Search search(text);
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!kBegins[static_cast<unsigned char>(text[at])] || !mayBeginAt(text, at)) continue;
    if (const std::size_t length = search.lengthAt(at)) {
      found.push_back({at, at + length});
      at += length - 1;
    }
  }
}
