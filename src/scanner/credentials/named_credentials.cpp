#include "scanner/credentials/named_credentials.h"

#include <algorithm>

#include "scanner/credentials/credential_name.h"
#include "scanner/credentials/credential_value.h"
#include "text/ascii.h"

namespace {

bool isQuote(char c) {
  return c == '"' || c == '\'' || c == '`';
}
bool isNameSign(char c) {
  return text::isAlphanumeric(c) || c == '-' || c == '_' || c == '.';
}

bool holdsIgnoringCase(std::string_view text, std::string_view lowerCase) {
  for (; text.size() >= lowerCase.size(); text.remove_prefix(1)) {
    if (text::equalsLowered(text.substr(0, lowerCase.size()), lowerCase)) return true;
  }
  return false;
}

/// Searches one text for everything but shapes and URLs: names with values.
class NameSearch {
 public:
  NameSearch(std::string_view text, bool isArgument, std::vector<TextSpan>& found)
      : text_(text), isArgument_(isArgument), found_(found) {}

  /// What it says of the next argument.
  NextArgument run() {
    for (std::size_t at = 0; at < text_.size();) {
      if (!isNameSign(text_[at])) {
        ++at;
        continue;
      }
      std::size_t end = at;
      while (end < text_.size() && isNameSign(text_[end])) ++end;
      at = std::max(end, take(at, end));
    }
    return next_;
  }

 private:
  char at(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }

  std::size_t skipBlanks(std::size_t i) const {
    while (i < text_.size() && text::isWhiteSpace(text_[i])) ++i;
    return i;
  }

  /// Looks at the name from `begin` to `end`; returns where to go on (0: behind the name).
  std::size_t take(std::size_t begin, std::size_t end) {
    const std::string_view name = text_.substr(begin, end - begin);
    if (text::isWhiteSpace(at(end)) && CredentialValue::isScheme(name))
      return takeScheme(begin, end);
    if (!namesCredential(name)) return 0;
    if (name == "PWD") return 0;  // the shell's working folder
    const bool mayHaveScheme = holdsIgnoringCase(name, "auth");
    if (at(end) == '=') return takeAssigned(begin, end + 1, mayHaveScheme);
    if (at(end) == ':' && (end + 1 == text_.size() || text::isWhiteSpace(text_[end + 1]))) {
      return takeHeader(begin, end + 1);
    }
    if (const std::size_t quoted = quotedValue(end)) return addInner(quoted, mayHaveScheme);
    if (name.front() == '-' && !isInsideWord(begin)) return takeOption(end);
    return 0;
  }

  /// "name=value"
  std::size_t takeAssigned(std::size_t begin, std::size_t value, bool mayHaveScheme) {
    if (reachesFromStart(begin)) return add(value, text_.size(), mayHaveScheme);
    return addInner(value, mayHaveScheme);
  }

  /// "Name: value", "Name: Scheme value"
  std::size_t takeHeader(std::size_t begin, std::size_t value) {
    value = skipBlanks(value);
    if (value == text_.size()) {
      next_ = NextArgument::headerValue;
      return value;
    }
    if (reachesFromStart(begin)) return add(value, text_.size(), true);
    if (begin > 0 && isQuote(text_[begin - 1])) {
      return add(value, std::min(text_.find(text_[begin - 1], value), text_.size()), true);
    }
    return addInner(value, true);
  }

  /// "--name value", "'--name', 'value'"
  std::size_t takeOption(std::size_t end) {
    std::size_t value = end;
    if (isQuote(at(value))) ++value;
    if (at(value) == ',') ++value;
    value = skipBlanks(value);
    if (value == text_.size()) {
      next_ = NextArgument::value;
      return value;
    }
    if (value == end || (value == end + 1 && isQuote(text_[end]))) return 0;
    const std::size_t wordEnd = innerEnd(value);
    if (CredentialValue::isOption(text_.substr(value, wordEnd - value))) return 0;
    return addInner(value, false);
  }

  /// "Bearer value" behind the name of any header, or as an argument of its own
  std::size_t takeScheme(std::size_t begin, std::size_t end) {
    const std::string_view scheme = text_.substr(begin, end - begin);
    const bool isBearer = text::equalsLowered(scheme, "bearer");
    if (!isBearer && !text::equalsLowered(scheme, "basic")) return 0;
    const std::size_t value = skipBlanks(end);
    if (value == end || value == text_.size()) return 0;
    std::size_t before = begin;
    while (before > 0 && (text::isWhiteSpace(text_[before - 1]) || isQuote(text_[before - 1])))
      --before;
    const bool follows = before > 0 && (text_[before - 1] == ':' || text_[before - 1] == '=');
    const std::string_view word = text_.substr(value, innerEnd(value) - value);
    const bool isCredential = isBearer
                                  ? follows || (begin == 0 && isArgument_)
                                  : (follows || before == 0) && CredentialValue::looksEncoded(word);
    if (!isCredential || CredentialValue::isOption(word)) return 0;
    return addInner(value, false);
  }

  /// Where the quoted value of «"name": "value"», «name = 'value'» or «["name"] = 'value'»
  /// begins (at its quotation mark), or 0.
  std::size_t quotedValue(std::size_t end) const {
    std::size_t i = end;
    if (at(i) == '\\') ++i;
    if (isQuote(at(i))) ++i;
    if (at(i) == ']') ++i;
    i = skipBlanks(i);
    if (at(i) != '=' && at(i) != ':') return 0;
    i = skipBlanks(i + 1);
    return isQuote(at(i)) || (at(i) == '\\' && isQuote(at(i + 1))) ? i : 0;
  }

  /// Whether the value of the name at `begin` takes the whole rest of the argument: nothing
  /// but names and "=" stand before it ("--env=HF_TOKEN=…").
  bool reachesFromStart(std::size_t begin) {
    if (!isArgument_) return false;
    for (; plain_ < begin; ++plain_) {
      if (!isNameSign(text_[plain_]) && text_[plain_] != '=') return false;
    }
    return true;
  }

  bool isInsideWord(std::size_t begin) const {
    return begin > 0 && !text::isWhiteSpace(text_[begin - 1]) && !isQuote(text_[begin - 1]);
  }

  /// The end of the value at `value` inside a line.
  std::size_t innerEnd(std::size_t value) const {
    if (isQuote(at(value))) return std::min(text_.find(text_[value], value + 1), text_.size());
    for (std::size_t i = value; i < text_.size(); ++i) {
      if (text::isWhiteSpace(text_[i]) || text_[i] == '&' || text_[i] == ';') return i;
      if (i > value && isQuote(text_[i]) && closes(i)) return i;
    }
    return text_.size();
  }

  /// Whether the quotation mark at `i` ends a text rather than going on in the same word.
  bool closes(std::size_t i) const {
    constexpr std::string_view kBehind = ",;)]}\\";
    return i + 1 >= text_.size() || text::isWhiteSpace(text_[i + 1]) ||
           kBehind.find(text_[i + 1]) != std::string_view::npos || isQuote(text_[i + 1]);
  }

  std::size_t addInner(std::size_t value, bool mayHaveScheme) {
    if (at(value) == '\\' && isQuote(at(value + 1))) {
      value += 2;
      return add(value, std::min(text_.find(text_[value - 1], value), text_.size()), mayHaveScheme);
    }
    const std::size_t end = innerEnd(value);
    return add(isQuote(at(value)) ? value + 1 : value, end, mayHaveScheme);
  }

  std::size_t add(std::size_t value, std::size_t end, bool mayHaveScheme) {
    if (mayHaveScheme) {
      std::size_t word = value;
      while (word < text_.size() && isNameSign(text_[word])) ++word;
      if (CredentialValue::isScheme(text_.substr(value, word - value)) &&
          text::isWhiteSpace(at(word))) {
        // Inside a line the credential is the word behind the scheme.
        const std::size_t behind = skipBlanks(word);
        if (end <= behind && behind < text_.size()) return addInner(behind, false);
        value = std::min(behind, end);
      }
    }
    if (value >= end) return end;
    if (!CredentialValue::isPlain(text_.substr(value, end - value))) found_.push_back({value, end});
    return end;
  }

  std::string_view text_;
  bool isArgument_;
  std::vector<TextSpan>& found_;
  NextArgument next_ = NextArgument::anything;
  std::size_t plain_ = 0;  ///< up to here there are but names and "="
};

}  // namespace

NextArgument appendNamedCredentials(std::string_view text, bool isArgument,
                                    std::vector<TextSpan>& found) {
  return NameSearch(text, isArgument, found).run();
}
