#include "scanner/credentials/program_rule_follower.h"

#include <algorithm>

#include "scanner/credentials/harmless_values.h"
#include "scanner/credentials/looks_secret.h"
#include "text/ascii.h"
#include "text/contains.h"

namespace credentials {
namespace {

constexpr auto npos = std::string_view::npos;

TextSpan withoutQuotes(std::string_view text, TextSpan span) {
  const auto isMark = [](char c) { return c == '"' || c == '\''; };
  if (span.end - span.begin >= 2 && isMark(text[span.begin])) {
    const char mark = text[span.begin];
    ++span.begin;
    if (text[span.end - 1] == mark) --span.end;
  }
  return span;
}

/// "8080:80", "127.0.0.1:80": a port rather than a password.
bool isPortMapping(std::string_view value) {
  return text::contains(value, ":") && std::ranges::all_of(value, [](char c) {
           return text::isDigit(c) || c == ':' || c == '.' || c == '-';
         });
}

/// Whether it may be a password where a port, a path or a name could stand as well.
bool mayBePassword(std::string_view value) {
  if (looksSecret(value) || looksLikeKey(value)) return true;
  constexpr std::size_t kShortest = 7;
  const auto isSpecial = [](char c) { return std::string_view("!#%^&*+?~").find(c) != npos; };
  const auto isAllowed = [&](char c) { return text::isAlphanumeric(c) || isSpecial(c); };
  return value.size() >= kShortest && std::ranges::all_of(value, isAllowed) &&
         std::ranges::any_of(value, text::isLetter) &&
         std::ranges::any_of(value, [&](char c) { return text::isDigit(c) || isSpecial(c); });
}

bool matches(const Step& step, std::string_view text) {
  if (step.isBeginning) return text.starts_with(step.text);
  if (step.isEnding) return text.ends_with(step.text);
  return text == step.text;
}

/// Whether a value rather than the rest of a longer option's name follows: not for "-pass" in
/// "-passwd", nor for "-p" in "-port".
bool mayBeGluedTo(std::string_view option, std::string_view rest) {
  if (option.size() > 2 && option[0] == '-') return false;
  return rest.find_first_not_of("abcdefghijklmnopqrstuvwxyz-") != std::string_view::npos;
}

bool endsCluster(std::string_view text, std::string_view option) {
  constexpr std::size_t kLongest = 7;
  return option.size() == 2 && text.size() > 2 && text.size() <= kLongest && text[0] == '-' &&
         text.back() == option[1] && std::all_of(text.begin() + 1, text.end(), text::isLetter);
}

}  // namespace

std::optional<TextSpan> credentialIn(std::string_view word, std::size_t begin, Part part) {
  TextSpan span = withoutQuotes(word, {begin, word.size()});
  const std::string_view value = word.substr(span.begin, span.end - span.begin);
  const auto behind = [&](char separator) -> std::optional<TextSpan> {
    const auto at = value.find(separator);
    if (at == std::string_view::npos) {
      if (!looksLikeKey(value)) return std::nullopt;
      return span;
    }
    const TextSpan rest{span.begin + at + 1, span.end};
    // "TOKEN:", "TOKEN:x": the key stands in the place of the user.
    if (rest.end - rest.begin <= 1 && looksLikeKey(value.substr(0, at))) {
      return TextSpan{span.begin, span.begin + at};
    }
    return rest;
  };
  std::optional<TextSpan> found = span;
  switch (part) {
    case Part::whole:
      break;
    case Part::behindColon:
      // A URL's own colon does not count, nor that of a drive.
      if (text::contains(value, "://") || isPath(value)) return std::nullopt;
      found = behind(':');
      break;
    case Part::behindPercent:
      found = behind('%');
      break;
    case Part::behindComma:
      found = behind(',');
      break;
    case Part::behindEquals:
      found = behind('=');
      break;
    case Part::slashToAt: {
      const auto slash = value.find('/');
      if (slash == std::string_view::npos || slash == 0 || value[0] == '@') return std::nullopt;
      const auto at = value.rfind('@');
      found->begin = span.begin + slash + 1;
      if (at != std::string_view::npos && at > slash) found->end = span.begin + at;
      break;
    }
    case Part::colonToAt: {
      // ":pserver:user:password@host" has a method before the user.
      std::size_t colon = value.find(':');
      if (colon == 0) colon = value.find(':', value.find(':', 1) + 1);
      const auto at = value.rfind('@');
      if (colon == std::string_view::npos || at == std::string_view::npos || at < colon) {
        return std::nullopt;
      }
      found = TextSpan{span.begin + colon + 1, span.begin + at};
      break;
    }
    case Part::likely:
      if (!mayBePassword(value)) return std::nullopt;
      break;
    case Part::pass: {
      constexpr std::string_view kPass = "pass:";
      if (!value.starts_with(kPass)) return std::nullopt;
      found->begin += kPass.size();
      break;
    }
  }
  if (!found || found->begin >= found->end) return std::nullopt;
  const std::string_view secret = word.substr(found->begin, found->end - found->begin);
  if (isNothing(secret) || isPortMapping(secret)) return std::nullopt;
  return found;
}

void RuleFollower::begin(const Ways* ways) {
  ways_ = ways;
  progress_.assign(ways->rules.size(), 0);
  expected_ = nullptr;
  last_ = std::nullopt;
  hasBatchOption_ = false;
}

void RuleFollower::end() {
  if (ways_ != nullptr && ways_->masksLastWord && hasBatchOption_ && last_) {
    add(*last_, 0, Part::whole);
  }
  ways_ = nullptr;
}

void RuleFollower::take(const PlacedWord& word) {
  const std::string_view text = word.word.text;
  if (expected_ != nullptr) {
    const Step* option = expected_;
    expected_ = nullptr;
    if (!looksLikeOption(text)) {
      add(word, 0, option->part);
      return;
    }
  }
  const bool isAnOption = text.size() > 1 && text[0] == '-';
  if (ways_->masksLastWord) {
    if (isAnOption) {
      hasBatchOption_ = hasBatchOption_ || (text[1] != '-' && text::contains(text, "b"));
    } else {
      last_ = word;
    }
  }
  if (ways_->masksUrls) takeUrl(word);
  if (ways_->masksDsns) takeDsn(word);
  for (std::size_t i = 0; i < ways_->rules.size(); ++i) {
    if (advance(ways_->rules[i], progress_[i], word, isAnOption)) return;
  }
}

/// True when the word was a credential.
bool RuleFollower::advance(const Rule& rule, std::size_t& at, const PlacedWord& word,
                           bool isAnOption) {
  if (at == rule.size()) return false;  // a rule for the first words has had them
  const std::string_view text = word.word.text;
  const Step& step = rule[at];
  switch (step.kind) {
    case StepKind::option:
      return takeOption(step, word);
    case StepKind::literal:
      if (matches(step, text)) {
        ++at;
      } else if (at > 0 && !isAnOption && rule[0].kind == StepKind::literal &&
                 rule.back().kind != StepKind::option) {
        at = matches(rule[0], text) ? 1 : 0;
      }
      return false;
    case StepKind::anything:
      if (isAnOption) return false;
      ++at;
      return false;
    case StepKind::likely:
    case StepKind::credential:
      break;
  }
  if (looksLikeOption(text) || (isAnOption && text.size() == 2)) return false;
  const bool isLikely = step.kind == StepKind::credential ||
                        ((looksSecret(text) || looksLikeKey(text)) && !text::contains(text, "="));
  const bool isAdded = isLikely && add(word, 0, step.part);
  // The word that holds it may still come.
  if (!isAdded && (step.part == Part::slashToAt || step.part == Part::colonToAt)) {
    return false;
  }
  ++at;
  if (at == rule.size() && rule[0].kind == StepKind::literal) at = 0;
  return isAdded;
}

bool RuleFollower::takeOption(const Step& option, const PlacedWord& word) {
  const std::string_view text = word.word.text;
  if (!text.starts_with(option.text)) {
    // "-su user:password": behind options that have no value.
    if (option.part != Part::whole && endsCluster(text, option.text)) expected_ = &option;
    return expected_ == &option;
  }
  if (text.size() == option.text.size()) {
    if (option.mayBeNext) expected_ = &option;
    return option.mayBeNext;
  }
  if (!option.mayBeGlued) return false;
  std::size_t value = option.text.size();
  if (text[value] == '=') {
    ++value;
  } else if (option.mayBeNext && !mayBeGluedTo(option.text, text.substr(value))) {
    return false;
  }
  return add(word, value, option.part);
}

void RuleFollower::takeUrl(const PlacedWord& word) {
  const auto scheme = word.word.text.find("://");
  if (scheme != std::string_view::npos) add(word, scheme + 3, Part::whole);
}

void RuleFollower::takeDsn(const PlacedWord& word) {
  const std::string_view text = word.word.text;
  const auto before = text.find(",p=");
  if (before == std::string_view::npos) return;
  const std::size_t begin = before + 3;
  const std::size_t end = std::min(text.find(',', begin), text.size());
  if (begin < end) {
    found_.push_back({word.argument, {word.word.begin + begin, word.word.begin + end}});
  }
}

bool RuleFollower::add(const PlacedWord& word, std::size_t begin, Part part) {
  const auto span = credentialIn(word.word.text, begin, part);
  if (!span) return false;
  const std::size_t offset = word.word.begin;
  found_.push_back({word.argument, {offset + span->begin, offset + span->end}});
  return true;
}

}  // namespace credentials
