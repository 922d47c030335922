#include "scanner/credentials/named_values.h"

#include <algorithm>

#include "scanner/credentials/harmless_values.h"
#include "scanner/credentials/looks_secret.h"
#include "text/ascii.h"

namespace credentials {
namespace {

/// The length of a scheme's name at the start of the value: "Bearer ".
std::size_t schemeLength(std::string_view value) {
  std::size_t word = 0;
  while (word < value.size() && isNameCharacter(value[word])) ++word;
  if (word == value.size() || !isScheme(value.substr(0, word))) return 0;
  std::size_t behind = word;
  while (behind < value.size() && text::isWhiteSpace(value[behind])) ++behind;
  return behind > word ? behind : 0;
}

}  // namespace

std::size_t NamedValues::take(NameKind kind, std::size_t value, bool reachesEnd) {
  if (value >= text_.size()) return value;
  if (kind == NameKind::harmless) return value;
  const bool isText =
      isStrong(kind) || kind == NameKind::authentication || kind == NameKind::anyKey;
  if (bounds_.at(value) == '[' && isText && !reachesEnd) return takeList(value);
  if (bounds_.at(value) == '{' && isText && !reachesEnd) return enterObject(kind, value);
  if (bounds_.at(value) == '(' && isText) return takePair(value);
  if (isText && reachesEnd) return addIf(kind, value, endOfSetting(value));
  // A value that is not always a secret is judged by its first word, and may itself hold names.
  const std::size_t judged = bounds_.judgedEnd(value);
  const std::size_t begin = bounds_.behindOpening(value);
  const std::string_view word = text_.substr(begin, judged > begin ? judged - begin : 0);
  if (isText) {
    const std::size_t end = judged < value + kLongestLook ? judged : bounds_.end(value);
    return addIf(kind, begin, end);
  }
  if (kind == NameKind::account) return takeAccount(value, begin, word);
  const std::size_t shown = schemeLength(word);
  if (!mayBeSecret(word.substr(shown), kind)) return value;
  const std::size_t end = judged < value + kLongestLook ? judged : bounds_.end(value);
  return add(begin + shown, end);
}

/// "user=name:password"
std::size_t NamedValues::takeAccount(std::size_t value, std::size_t begin, std::string_view word) {
  const std::size_t colon = word.find(':');
  if (colon == std::string_view::npos) {
    // A key where a user's name is expected.
    const bool isKey =
        word.find('@') == std::string_view::npos && mayBeSecret(word, NameKind::unknown);
    return isKey ? add(begin, begin + word.size()) : value;
  }
  if (word.find("://") == colon) return value;
  const std::string_view password = word.substr(colon + 1);
  constexpr std::size_t kShortest = 6;
  const bool hasBoth =
      std::ranges::any_of(password, text::isDigit) && std::ranges::any_of(password, text::isLetter);
  if (password.size() < kShortest || !hasBoth || isNothing(password)) return value;
  return add(begin + colon + 1, begin + word.size());
}

/// "["a", "b"]": everything between the brackets.
std::size_t NamedValues::takeList(std::size_t open) {
  const std::size_t end = std::min(text_.find(']', open), text_.size());
  std::size_t begin = open + 1;
  while (begin < end &&
         (text::isWhiteSpace(text_[begin]) || isQuote(text_[begin]) || text_[begin] == '\\')) {
    ++begin;
  }
  std::size_t last = end;
  while (last > begin && (text::isWhiteSpace(text_[last - 1]) || isQuote(text_[last - 1]) ||
                          text_[last - 1] == '\\')) {
    --last;
  }
  return begin < last ? addIf(NameKind::token, begin, last) : end;
}

/// «("user", "password")»
std::size_t NamedValues::takePair(std::size_t open) {
  const std::size_t limit = std::min(open + kLongestLook, text_.size());
  const std::size_t user = bounds_.skipBlanks(open + 1);
  if (!isQuote(bounds_.at(user))) return user;
  const std::size_t comma = bounds_.closing(user, 0, limit) + 1;
  if (bounds_.at(comma) != ',') return std::min(comma, text_.size());
  const std::size_t password = bounds_.skipBlanks(comma + 1);
  return isQuote(bounds_.at(password)) ? take(NameKind::password, password, false) : comma;
}

/// The end of the text, or of this setting where "; name=" follows.
std::size_t NamedValues::endOfSetting(std::size_t value) const {
  for (std::size_t i = text_.find(';', value); i != std::string_view::npos;
       i = text_.find(';', i + 1)) {
    if (bounds_.beginsSetting(bounds_.skipBlanks(i + 1))) return i;
  }
  return text_.size();
}

std::size_t NamedValues::enterObject(NameKind kind, std::size_t open) {
  if (open >= objectEnd_) {
    objectKind_ = kind;
    objectEnd_ = std::min(text_.find('}', open), text_.size());
  }
  return open + 1;
}

std::size_t NamedValues::addIf(NameKind kind, std::size_t begin, std::size_t end) {
  if (begin >= end) return end;
  const std::string_view value = text_.substr(begin, end - begin);
  const std::size_t shown = schemeLength(value.substr(0, kLongestLook));
  if (shown > 0 && shown < value.size()) {
    return isNothing(value.substr(shown)) ? end : add(begin + shown, end);
  }
  // In a line the credential is the word after the scheme.
  if (isScheme(value) && text::isWhiteSpace(bounds_.at(end))) {
    const std::size_t behind = bounds_.skipBlanks(end);
    const std::string_view word = text_.substr(behind, bounds_.judgedEnd(behind) - behind);
    if (!word.empty() && !looksLikeOption(word) && !isNothing(word)) {
      return add(bounds_.behindOpening(behind), bounds_.end(behind));
    }
    return end;
  }
  // "PGPASSWORD=$PASS command"
  const std::size_t blank = value.substr(0, kLongestLook).find_first_of(" \n");
  if (blank != std::string_view::npos && value[0] == '$' && isReference(value.substr(0, blank))) {
    return begin + blank;
  }
  if (mayBeSecret(value, kind)) return add(begin, end);
  return end;
}

std::size_t NamedValues::add(std::size_t begin, std::size_t end) {
  if (begin < end) found_.push_back({begin, end});
  return end;
}

std::optional<NameKind> NamedValues::objectAround(std::size_t name) const {
  if (name >= objectEnd_) return std::nullopt;
  return objectKind_;
}

}  // namespace credentials
