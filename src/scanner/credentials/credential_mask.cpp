#include "scanner/credentials/credential_mask.h"

#include <algorithm>

#include "scanner/credentials/credential_finder.h"
#include "scanner/credentials/secret_redaction.h"
#include "text/ascii.h"
#include "text/text_span.h"

namespace CredentialMask {
namespace {

using credentials::InArguments;

std::string masked(std::string_view text, const std::vector<TextSpan>& values) {
  std::string out;
  std::size_t at = 0;
  for (const TextSpan& value : values) {
    out.append(text, at, value.begin - at).append(kMask);
    at = value.end;
  }
  return out.append(text, at);
}

std::optional<std::vector<std::string>> masked(std::span<const std::string_view> arguments,
                                               const InArguments& in) {
  if (in.found.empty() && in.searched == arguments.size()) return std::nullopt;
  const auto searched = arguments.first(in.searched);
  std::vector<std::string> shown(searched.begin(), searched.end());
  for (const auto& [argument, values] : in.found) shown[argument] = masked(shown[argument], values);
  if (in.searched < arguments.size()) shown.emplace_back(kMask);
  return shown;
}

/// The values found in the arguments, as spans of the joined line.
std::vector<TextSpan> inJoined(std::span<const std::string_view> arguments, const InArguments& in,
                               std::size_t lineEnd) {
  std::vector<TextSpan> values;
  std::size_t argument = 0;
  std::size_t offset = 0;
  for (const auto& [holder, spans] : in.found) {
    for (; argument < holder; ++argument) offset += arguments[argument].size() + 1;
    for (const TextSpan& span : spans) values.push_back({offset + span.begin, offset + span.end});
  }
  if (in.searched < arguments.size()) {
    for (; argument < in.searched; ++argument) offset += arguments[argument].size() + 1;
    values.push_back({offset, lineEnd});
  }
  return values;
}

struct Replacement {
  TextSpan span;
  std::string_view text;
};

/// Appends the replacements for the parts of `value` that no match covers. `match` is the first
/// match that ends after the value's beginning.
void appendRest(std::string_view line, const TextSpan& value,
                std::vector<TextSpan>::const_iterator match,
                std::vector<TextSpan>::const_iterator end, std::vector<Replacement>& out) {
  std::size_t begin = value.begin;
  for (; match != end && match->begin < value.end; ++match) {
    std::size_t rest = std::max(match->begin, begin);
    while (rest > begin && text::isWhiteSpace(line[rest - 1])) --rest;
    if (rest > begin) out.push_back({{begin, rest}, kMask});
    begin = match->end;
  }
  if (begin >= value.end) return;
  // The rest of a value directly behind a match is dropped: the match's text already ends in
  // "•••".
  out.push_back({{begin, value.end}, begin == value.begin ? kMask : ""});
}

/// The line with each match of the pattern replaced by its text, and with what no match covers of
/// the values masked. `matches` and `values` are in order.
std::string redacted(std::string_view line, const std::vector<TextSpan>& matches,
                     const std::vector<TextSpan>& values) {
  std::vector<Replacement> replacements;
  replacements.reserve(matches.size() + values.size());
  for (const TextSpan& match : matches) {
    replacements.push_back({match, ProcessScanner::kRedactedSecret});
  }
  auto match = matches.begin();
  for (const TextSpan& value : values) {
    while (match != matches.end() && match->end <= value.begin) ++match;
    appendRest(line, value, match, matches.end(), replacements);
  }
  std::ranges::sort(replacements,
                    [](const auto& a, const auto& b) { return a.span.begin < b.span.begin; });

  std::string out;
  std::size_t at = 0;
  for (const auto& [span, text] : replacements) {
    out.append(line, at, span.begin - at).append(text);
    at = span.end;
  }
  return out.append(line, at);
}

}  // namespace

std::string maskedLine(std::string_view line) {
  return masked(line, credentials::findInLine(line));
}

Shown shown(std::span<const std::string_view> arguments, std::string_view joined) {
  const auto found = credentials::findInArguments(arguments);
  const auto matches = ProcessScanner::secretMatches(joined);
  return {masked(arguments, found),
          redacted(joined, matches, inJoined(arguments, found, joined.size()))};
}

}  // namespace CredentialMask
