#include "scanner/credentials/credential_finder.h"

#include <algorithm>
#include <array>

#include "scanner/credentials/credential_name.h"
#include "scanner/credentials/harmless_values.h"
#include "scanner/credentials/looks_secret.h"
#include "scanner/credentials/named_credentials.h"
#include "scanner/credentials/program_credentials.h"
#include "scanner/credentials/token_formats.h"
#include "scanner/credentials/url_credentials.h"
#include "scanner/credentials/value_bounds.h"
#include "text/ascii.h"

namespace credentials {
namespace {

using Form = Announcement::Form;

constexpr std::size_t kMostArguments = 4096;

/// Whether an argument that has no name is a credential: one random word in base64, of 40 to 512
/// characters, with a "+" in it or a "=" at its end. `before`: the argument before it, which may
/// say that it is none.
bool isUnnamedCredential(std::string_view argument, std::string_view before) {
  constexpr std::size_t kShortest = 40;
  constexpr std::size_t kLongest = 512;
  if (argument.size() < kShortest || argument.size() > kLongest) return false;
  const auto isAllowed = [](char c) {
    return text::isAlphanumeric(c) || c == '+' || c == '/' || c == '=';
  };
  if (!std::ranges::all_of(argument, isAllowed)) return false;
  if (argument.find_first_of("+=") == std::string_view::npos) return false;
  if (argument.find('=') < argument.size() - 2) return false;
  if (isPath(argument) || kindOf(before) == NameKind::harmless) return false;
  return mayBeSecret(argument, NameKind::unknown);
}

/// Finds credentials that take several arguments of one process to see: names and their values.
class ArgumentSearch {
 public:
  explicit ArgumentSearch(std::span<const std::string_view> arguments) : arguments_(arguments) {}

  InArguments run() {
    for (std::size_t i = 0; i < arguments_.size(); ++i) takeArgument(i);
    appendProgramCredentials(arguments_, found_);
    return {grouped(), arguments_.size()};
  }

 private:
  void takeArgument(std::size_t i) {
    const std::string_view argument = arguments_[i];
    if (announced_.form != Form::nothing && takeAnnounced(i)) return;
    const Announcement before = announced_;
    spans_.clear();
    announced_ = appendNamedCredentials(argument, true, namesLeft_, spans_);
    appendUrlCredentials(argument, spans_);
    appendTokens(argument, spans_);
    for (const TextSpan& span : spans_) found_.push_back({i, span});
    if (!spans_.empty()) return;
    appendUserInfo(argument, spans_);
    for (const TextSpan& span : spans_) found_.push_back({i, span});
    if (before.form != Form::nothing || i == 0) return;
    takePaired(i);
    if (isUnnamedCredential(argument, arguments_[i - 1])) {
      found_.push_back({i, {0, argument.size()}});
    }
  }

  /// Takes this argument as the value that the one before has announced. False when it is no
  /// value.
  bool takeAnnounced(std::size_t i) {
    const std::string_view argument = arguments_[i];
    const bool isHeader = announced_.form == Form::headerValue;
    if (!isHeader && looksLikeOption(argument)) return false;
    if (namesLeft_-- <= 0) {
      if (!argument.empty()) found_.push_back({i, {0, argument.size()}});
      return true;
    }
    const NameKind kind = isCarried_                  ? NameKind::token
                          : isSwitch(announced_.name) ? NameKind::unknown
                                                      : kindOf(announced_.name);
    isCarried_ = false;
    if (isScheme(argument) && i + 1 < arguments_.size() &&
        (isHeader || schemeCarries(argument, arguments_[i + 1]))) {
      if (!isCredential(kind)) return false;
      announced_.form = Form::headerValue;
      isCarried_ = true;
      return true;
    }
    if (kind == NameKind::harmless || !mayBeSecret(argument, kind)) return false;
    // "-e NAME=value": only the value of NAME can be random here, and NAME decides about it.
    if (kind == NameKind::unknown && isAssignment(argument)) return false;
    const std::size_t shown = shownScheme(argument);
    found_.push_back({i, {shown, argument.size()}});
    announced_ = {};
    return true;
  }

  /// "--auth Bearer V", "--auth Basic dTpw"
  static bool schemeCarries(std::string_view scheme, std::string_view value) {
    if (looksLikeOption(value) || isNothing(value)) return false;
    return !text::equalsLowered(scheme, "basic") || looksEncoded(value) ||
           value.find(':') != std::string_view::npos;
  }

  /// The length of "Bearer " before a value.
  static std::size_t shownScheme(std::string_view value) {
    const std::size_t blank = value.find(' ');
    if (blank == std::string_view::npos || !isScheme(value.substr(0, blank))) return 0;
    return std::min(value.find_first_not_of(' ', blank), value.size());
  }

  /// A setting's name and value side by side: "config set db_password V".
  void takePaired(std::size_t i) {
    const std::string_view before = arguments_[i - 1];
    constexpr std::size_t kLongestName = 60;
    if (before.empty() || before.front() == '-' || before.size() > kLongestName) return;
    const std::string_view value = arguments_[i];
    if (value.empty() || value.front() == '-' || value.front() == '/') return;
    const auto isAllowed = [](char c) {
      return text::isAlphanumeric(c) || c == '_' || c == '-' || c == '.' || c == '/' || c == ':';
    };
    if (std::ranges::none_of(value.substr(0, kLongestName), text::isDigit)) return;
    if (!std::ranges::all_of(before, isAllowed)) return;
    const NameKind kind = kindOf(before);
    if (kind != NameKind::password && kind != NameKind::token) return;
    if (!looksSecret(value) && !looksLikeKey(value) && !setsSomething(i)) return;
    if (mayBeSecret(value, kind)) found_.push_back({i, {0, value.size()}});
  }

  /// Whether the command says that something is set: "config set", "defaults write".
  bool setsSomething(std::size_t before) const {
    constexpr std::array<std::string_view, 9> kVerbs{"config", "set",    "write",  "create", "put",
                                                     "setenv", "modify", "update", "edit"};
    constexpr std::size_t kFarthest = 8;
    for (std::size_t i = before - std::min(before, kFarthest); i < before; ++i) {
      if (std::ranges::find(kVerbs, arguments_[i]) != kVerbs.end()) return true;
    }
    return false;
  }

  std::vector<InArgument> grouped() {
    std::vector<InArgument> all;
    if (found_.empty()) return all;
    std::ranges::stable_sort(found_, {}, &ArgumentSpan::argument);
    for (const ArgumentSpan& part : found_) {
      if (part.span.begin >= part.span.end) continue;
      if (all.empty() || all.back().argument != part.argument) {
        if (!all.empty()) mergeSpans(all.back().spans);
        all.push_back({part.argument, {}});
      }
      all.back().spans.push_back(part.span);
    }
    if (!all.empty()) mergeSpans(all.back().spans);
    return all;
  }

  std::span<const std::string_view> arguments_;
  std::vector<ArgumentSpan> found_;
  std::vector<TextSpan> spans_;
  Announcement announced_;
  bool isCarried_ = false;  // "Bearer" has come between the name and its value
  int namesLeft_ = kMostNames;
};

}  // namespace

InArguments findInArguments(std::span<const std::string_view> arguments) {
  return ArgumentSearch(arguments.first(std::min(arguments.size(), kMostArguments))).run();
}

std::vector<TextSpan> findInLine(std::string_view line) {
  std::vector<TextSpan> found;
  int namesLeft = kMostNames;
  appendNamedCredentials(line, false, namesLeft, found);
  appendUrlCredentials(line, found);
  appendTokens(line, found);
  std::vector<ArgumentSpan> ofPrograms;
  const std::string_view whole[] = {line};
  appendProgramCredentials(whole, ofPrograms);
  for (const ArgumentSpan& part : ofPrograms) found.push_back(part.span);
  mergeSpans(found);
  return found;
}

}  // namespace credentials
