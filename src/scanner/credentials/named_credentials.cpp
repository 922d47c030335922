#include "scanner/credentials/named_credentials.h"

#include <algorithm>
#include <array>
#include <optional>

#include "scanner/credentials/harmless_values.h"
#include "scanner/credentials/looks_secret.h"
#include "scanner/credentials/named_values.h"
#include "scanner/credentials/value_bounds.h"
#include "text/ascii.h"

namespace credentials {
namespace {

using namespace std::string_view_literals;

class NameSearch {
 public:
  NameSearch(std::string_view text, bool isArgument, int& namesLeft, std::vector<TextSpan>& found)
      : text_(text),
        bounds_(text),
        isArgument_(isArgument),
        namesLeft_(namesLeft),
        values_(text, found) {}

  Announcement run() {
    const char* const text = text_.data();
    const std::size_t size = text_.size();
    for (std::size_t at = 0; at < size;) {
      if (!isNameCharacter(text[at])) {
        ++at;
        continue;
      }
      std::size_t end = at + 1;
      while (end < size && isNameCharacter(text[end])) ++end;
      // In most texts a word before a blank or a slash is no name; skip it early.
      at = end < size && text[end] == '/' ? end : std::max(end, take(at, end));
    }
    return next_;
  }

 private:
  char at(std::size_t i) const { return bounds_.at(i); }
  std::size_t skipBlanks(std::size_t i) const { return bounds_.skipBlanks(i); }

  std::string_view name(std::size_t begin, std::size_t end) const {
    return text_.substr(begin, end - begin);
  }

  /// False when there have been too many names: everything that follows is then masked.
  bool countName(std::size_t begin) {
    if (namesLeft_ > 0) {
      --namesLeft_;
      return true;
    }
    values_.add(begin, text_.size());
    return false;
  }

  /// Looks at the name from `begin` to `end`. Returns where the search continues; 0 means behind
  /// the name.
  std::size_t take(std::size_t begin, std::size_t end) {
    const char next = at(end);
    switch (next) {
      case '=':
        return takeAssigned(begin, end, end + 1);
      case ':':
        return takeColon(begin, end);
      case '"':
      case '\'':
      case '`':
      case '\\':
        return takeQuoted(begin, end);
      case '>':
        return takeElement(begin, end);
      case '\0':
        if (end < text_.size()) return 0;
        return takeLast(begin, end);
      default:
        return text::isWhiteSpace(next) ? takeBlank(begin, end) : 0;
    }
  }

  /// "<name>value</name>"
  std::size_t takeElement(std::size_t begin, std::size_t end) {
    if (begin == 0 || text_[begin - 1] != '<' || !countName(end)) return 0;
    const NameKind kind = kindAt(begin, end);
    if (!isStrong(kind)) return 0;
    return values_.addIf(kind, end + 1, std::min(text_.find('<', end), text_.size()));
  }

  /// "name=value"
  std::size_t takeAssigned(std::size_t begin, std::size_t end, std::size_t value) {
    if (at(value) == '=' || at(value) == '~') return value + 1;  // a comparison
    if (!countName(value)) return text_.size();
    if (at(value) == '>') ++value;  // "name => value"
    const std::size_t quoted = skipBlanks(value);
    if (quoted > value && isQuote(at(quoted)))
      return values_.take(kindAt(begin, end), quoted, false);
    return values_.take(kindAt(begin, end), value, reachesFromStart(begin));
  }

  NameKind kindAt(std::size_t begin, std::size_t end) const {
    return kindIn(text_, begin, end, values_.objectAround(begin));
  }

  /// "Name: value", "name:value", "name:=value"
  std::size_t takeColon(std::size_t begin, std::size_t end) {
    const char behind = at(end + 1);
    if (behind == '/' && at(end + 2) == '/') return end + 3;
    if (behind == ':') return end + 2;
    if (behind == '=') return takeAssigned(begin, end, end + 2);
    if (end >= 2 && begin >= 2 && text_[begin - 1] == '{' && text_[begin - 2] == '$') {
      return std::min(text_.find('}', end), text_.size());  // "${NAME:-default}"
    }
    if (!countName(end + 1)) return text_.size();
    const NameKind kind = kindAt(begin, end);
    if (end + 1 == text_.size()) {
      if (isCredential(kind)) next_ = {Announcement::Form::headerValue, name(begin, end)};
      return end + 1;
    }
    if (text::isWhiteSpace(behind)) return takeHeader(kind, begin, end, skipBlanks(end + 1));
    if (isQuote(behind) || behind == '[' || behind == '{')
      return values_.take(kind, end + 1, false);
    return takeGlued(kind, begin, end);
  }

  /// "Name: value", "Name: Scheme value", "- name: value" of YAML
  std::size_t takeHeader(NameKind kind, std::size_t begin, std::size_t end, std::size_t value) {
    if (value == text_.size()) {
      if (isCredential(kind)) next_ = {Announcement::Form::headerValue, name(begin, end)};
      return value;
    }
    // "The password: ask the admin"
    if (isCredential(kind) && isProseText() && !isQuote(at(value)) && begin > 0 &&
        text_[begin - 1] == ' ') {
      const std::string_view word = text_.substr(value, bounds_.judgedEnd(value) - value);
      return looksSecret(word) || looksLikeKey(word) ? values_.take(kind, value, false) : value;
    }
    if (isCredential(kind) && isSentence(begin, value)) return value;
    // «echo "Password: "»: the quotation mark closes the prompt, and no value follows.
    if (isQuote(at(value)) && quotesBefore(value, at(value)) % 2 == 1) return value;
    if (reachesFromStart(begin)) return values_.take(kind, value, true);
    if (begin > 0 && isQuote(text_[begin - 1]) && !isQuote(at(value))) {
      // The whole header is quoted: its value ends at the closing mark.
      return values_.addIf(kind, value,
                           std::min(text_.find(text_[begin - 1], value), text_.size()));
    }
    return values_.take(kind, value, false);
  }

  /// "password: use another hash": a sentence, in which no value follows.
  bool isSentence(std::size_t begin, std::size_t value) const {
    std::size_t end = begin;
    while (text::isLower(at(end))) ++end;
    if (at(end) != ':') return false;
    std::size_t word = value;
    while (text::isLower(at(word))) ++word;
    if (isScheme(text_.substr(value, word - value))) return false;
    return word > value && at(word) == ' ' && text::isLetter(at(word + 1)) &&
           at(skipName(word + 1)) != ':' && at(skipName(word + 1)) != '=';
  }

  /// How many of these quotation marks there are before `end`, which must never be less than in
  /// the last call.
  int quotesBefore(std::size_t end, char mark) {
    for (; quotesCountedTo_ < end; ++quotesCountedTo_) {
      const char c = text_[quotesCountedTo_];
      if (!isQuote(c)) continue;
      ++(c == '"' ? doubleQuotes_ : singleQuotes_);
    }
    return mark == '"' ? doubleQuotes_ : singleQuotes_;
  }

  std::size_t skipName(std::size_t i) const {
    while (i < text_.size() && isNameCharacter(text_[i])) ++i;
    return i;
  }

  /// "--token:value", "X-Api-Key:value", "/password:value"
  std::size_t takeGlued(NameKind kind, std::size_t begin, std::size_t end) {
    const std::size_t value = end + 1;
    const char before = begin > 0 ? text_[begin - 1] : ' ';
    const bool isFree = text::isWhiteSpace(before) || isQuote(before) || before == ',' ||
                        before == '{' || before == ';' || before == '=' ||
                        (before == '/' && begin == 1);
    if (!isFree || kind == NameKind::harmless) return value;
    const std::string_view word = text_.substr(value, bounds_.judgedEnd(value) - value);
    if (isTag(word)) return value;
    if (kind == NameKind::account || kind == NameKind::unknown) {
      const bool beginsValue = !word.empty() && text::isAlphanumeric(word.front());
      return beginsValue && looksRandomValue(word, kind) ? values_.take(kind, value, false) : value;
    }
    const std::string_view own = name(begin, end);
    const bool isOneWord = std::ranges::all_of(own, text::isLower);
    const bool isClear = isStrong(kind) && (!isOneWord || kind == NameKind::password);
    const bool isOptionsValue = own.front() == '-' && kind == NameKind::authentication;
    if (!isClear && !isOptionsValue && !looksSecret(word) && !looksLikeKey(word)) return value;
    return values_.take(kind, value, reachesFromStart(begin) || (begin == 1 && before == '/'));
  }

  bool looksRandomValue(std::string_view word, NameKind kind) const {
    return kind != NameKind::harmless && mayBeSecret(word, NameKind::unknown);
  }

  /// «"name": "value"», «["name"] = 'value'», «"--name", "value"»
  std::size_t takeQuoted(std::size_t begin, std::size_t end) {
    const std::size_t value = quotedValue(end);
    if (value > 0) {
      if (!countName(value)) return text_.size();
      return values_.take(kindAt(begin, end), value, false);
    }
    if (text_[begin] == '-' && !isInsideWord(begin)) return takeOption(begin, end);
    // «define("DB_PASSWORD", "value")»
    if (begin >= 2 && text_[begin - 2] == '(' && isQuote(text_[end]) && at(end + 1) == ',') {
      const std::size_t argument = skipBlanks(end + 2);
      if (!isQuote(at(argument))) return 0;
      if (!countName(argument)) return text_.size();
      const NameKind kind = kindAt(begin, end);
      return isStrong(kind) ? values_.take(kind, argument, false) : 0;
    }
    return 0;
  }

  /// Where the value of a quoted name begins (at its quotation mark, if it has any), or 0.
  std::size_t quotedValue(std::size_t end) const {
    std::size_t i = end;
    while (at(i) == '\\') ++i;
    if (!isQuote(at(i))) return 0;
    ++i;
    const bool isIndex = at(i) == ']';
    if (isIndex) ++i;
    const std::size_t behind = i;
    i = skipBlanks(i);
    // «["db"]["password"] "value"»
    if (isIndex && i > behind && isQuote(at(i))) return i;
    if (at(i) != '=' && at(i) != ':') return 0;
    if (at(i + 1) == '=') return 0;
    if (at(i) == '=' && at(i + 1) == '>') ++i;
    i = skipBlanks(i + 1);
    return i < text_.size() ? i : 0;
  }

  std::size_t takeBlank(std::size_t begin, std::size_t end) {
    const std::string_view own = name(begin, end);
    if (isScheme(own)) {
      if (const std::size_t taken = takeScheme(begin, end)) return taken;
    }
    if (own.front() == '-') return isInsideWord(begin) ? 0 : takeOption(begin, end);
    const std::size_t next = skipBlanks(end);
    if (at(next) == '=') {
      // "name = value"
      if (at(next + 1) == '=' || at(next + 1) == '~') return next;
      if (!countName(next)) return text_.size();
      std::size_t value = next + 1;
      if (at(value) == '>') ++value;
      value = skipBlanks(value);
      return value < text_.size() ? values_.take(kindAt(begin, end), value, false) : value;
    }
    if (!isQuote(at(next))) return takeBareValue(begin, end, next);
    // «password "value"», «IDENTIFIED BY 'value'»
    if (!countName(next)) return text_.size();
    const bool isIdentified = text::equalsLowered(own, "by") && isBehindIdentified(begin);
    const NameKind kind = isIdentified ? NameKind::password : kindAt(begin, end);
    if (!isStrong(kind)) return 0;
    const std::string_view word = text_.substr(next + 1, bounds_.judgedEnd(next) - next - 1);
    return word.find(' ') == std::string_view::npos || isIdentified
               ? values_.take(kind, next, false)
               : 0;
  }

  /// "machine h login a password value"
  std::size_t takeBareValue(std::size_t begin, std::size_t end, std::size_t value) {
    if (value >= text_.size() || isInsideWord(begin)) return 0;
    const std::string_view word = text_.substr(value, bounds_.judgedEnd(value) - value);
    constexpr std::size_t kShortest = 7;
    if (word.size() < kShortest || !looksSecret(word)) return 0;
    if (!countName(value)) return text_.size();
    return isStrong(kindAt(begin, end)) ? values_.take(kindAt(begin, end), value, false) : 0;
  }

  /// "IDENTIFIED WITH some_plugin BY"
  bool isBehindIdentified(std::size_t by) const {
    constexpr std::string_view kWord = "identified";
    constexpr std::size_t kFarthest = 60;
    const std::size_t from = by - std::min(by, kFarthest);
    for (std::size_t i = from; i + kWord.size() <= by; ++i) {
      if (text::equalsLowered(text_.substr(i, kWord.size()), kWord)) return true;
    }
    return false;
  }

  /// Takes the last word of the text: its value may be the next argument.
  std::size_t takeLast(std::size_t begin, std::size_t end) {
    if (text_[begin] == '-' && !isInsideWord(begin)) announce(begin, end);
    return end;
  }

  void announce(std::size_t begin, std::size_t end) {
    const std::string_view own = name(begin, end);
    if (own.size() >= 2) next_ = {Announcement::Form::value, own};
  }

  /// "--name value", "'--name', 'value'"
  std::size_t takeOption(std::size_t begin, std::size_t end) {
    std::size_t value = end;
    if (isQuote(at(value))) ++value;
    if (at(value) == ',') ++value;
    value = skipBlanks(value);
    if (value == text_.size()) {
      announce(begin, end);
      return value;
    }
    if (value == end || (value == end + 1 && isQuote(text_[end]))) return 0;
    if (!countName(value)) return text_.size();
    const std::string_view own = name(begin, end);
    const NameKind kind = isSwitch(own) ? NameKind::unknown : kindAt(begin, end);
    if (!isCredential(kind) && kind != NameKind::unknown) return 0;
    const std::string_view word = text_.substr(value, bounds_.judgedEnd(value) - value);
    if (looksLikeOption(word)) return 0;
    // "--env NAME=value": NAME decides.
    if (kind == NameKind::unknown && (!looksRandomValue(word, kind) || isAssignment(word)))
      return 0;
    const std::size_t taken = values_.take(kind, value, false);
    return taken > value ? taken : 0;
  }

  /// "Bearer value", behind the name of any header or as a whole argument
  std::size_t takeScheme(std::size_t begin, std::size_t end) {
    const std::string_view scheme = name(begin, end);
    const bool isBearer = text::equalsLowered(scheme, "bearer");
    if (!isBearer && !text::equalsLowered(scheme, "basic")) return 0;
    const std::size_t value = skipBlanks(end);
    if (value == end || value == text_.size()) return 0;
    std::size_t before = begin;
    while (before > 0 && begin - before < kLongestLook &&
           (text::isWhiteSpace(text_[before - 1]) || isQuote(text_[before - 1]))) {
      --before;
    }
    const bool follows = before > 0 && (text_[before - 1] == ':' || text_[before - 1] == '=');
    const std::string_view word = text_.substr(value, bounds_.judgedEnd(value) - value);
    const bool isTaken = isBearer ? follows || (begin == 0 && isArgument_) || looksLikeKey(word)
                                  : (follows || before == 0) && looksEncoded(word);
    if (!isTaken || looksLikeOption(word) || isNothing(word)) return 0;
    return values_.add(value, bounds_.end(value));
  }

  /// Whether the value of the name at `begin` is the whole rest of the argument: that is so if
  /// there are only names and "=" before it ("--env=HF_TOKEN=…").
  bool reachesFromStart(std::size_t begin) {
    if (!isArgument_) return false;
    for (; plain_ < begin; ++plain_) {
      if (!isNameCharacter(text_[plain_]) && text_[plain_] != '=') return false;
    }
    return true;
  }

  bool isInsideWord(std::size_t begin) const {
    return begin > 0 && !text::isWhiteSpace(text_[begin - 1]) && !isQuote(text_[begin - 1]);
  }

  bool isProseText() {
    if (!isProse_) isProse_ = isProse(text_);
    return *isProse_;
  }

  std::string_view text_;
  ValueBounds bounds_;
  bool isArgument_;
  int& namesLeft_;
  NamedValues values_;
  Announcement next_;
  std::size_t plain_ = 0;  // up to here there are only names and "="
  std::optional<bool> isProse_;
  std::size_t quotesCountedTo_ = 0;
  int doubleQuotes_ = 0;
  int singleQuotes_ = 0;
};

}  // namespace

Announcement appendNamedCredentials(std::string_view text, bool isArgument, int& namesLeft,
                                    std::vector<TextSpan>& found) {
  return NameSearch(text, isArgument, namesLeft, found).run();
}

}  // namespace credentials
