#include "scanner/credentials/secret_redaction.h"

#include <re2/re2.h>

#include <cstdio>
#include <cstdlib>

#include "scanner/process_scanner.h"
#include "text/contains.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

/// Unicode's White_Space, as the inside of a character class: RE2's own \s knows ASCII only.
const std::string kWhiteSpace = R"(\x{09}-\x{0D}\x{20}\x{85}\x{A0}\x{1680}\x{2000}-\x{200A})"
                                R"(\x{2028}\x{2029}\x{202F}\x{205F}\x{3000})";

/// An option named like a credential, the white space after it, and its value:
/// --(?:api[_-]?key|token|password|secret|auth|key)\s+\S+
const RE2& secretFlag() {
  static const RE2 pattern("(?i)--(?:api[_-]?key|token|password|secret|auth|key)[" + kWhiteSpace +
                               "]+[^" + kWhiteSpace + "]+",
                           RE2::Quiet);
  if (!pattern.ok()) {
    std::fprintf(stderr, "vorda: the pattern for secrets does not compile: %s\n",
                 pattern.error().c_str());
    std::abort();
  }
  return pattern;
}

}  // namespace

std::vector<TextSpan> secretMatches(std::string_view commandLine) {
  std::vector<TextSpan> matches;
  if (!text::contains(commandLine, "--")) return matches;

  // A byte that is not UTF-8 matches neither class, and so would keep a secret that contains it
  // from being found.
  const std::string searched = text::withBytesOutsideUtf8Replaced(commandLine, '?');
  std::size_t at = 0;
  re2::StringPiece match;
  while (secretFlag().Match(searched, at, searched.size(), RE2::UNANCHORED, &match, 1)) {
    const auto begin = static_cast<std::size_t>(match.data() - searched.data());
    at = begin + match.size();
    matches.push_back({begin, at});
  }
  return matches;
}

std::string redactSecrets(std::string_view commandLine) {
  std::string redacted;
  std::size_t end = 0;
  for (const TextSpan& match : secretMatches(commandLine)) {
    redacted.append(commandLine, end, match.begin - end).append(kRedactedSecret);
    end = match.end;
  }
  return redacted.append(commandLine, end);
}

}  // namespace ProcessScanner
