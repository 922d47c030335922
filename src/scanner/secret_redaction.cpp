#include <re2/re2.h>

#include <cstdio>
#include <cstdlib>

#include "scanner/process_scanner.h"
#include "text/contains.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

constexpr std::string_view kRedacted = "--api-key •••";

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

std::string redactSecrets(std::string_view commandLine) {
  if (!text::contains(commandLine, "--")) return std::string(commandLine);

  // A byte that is not UTF-8 would match neither class, and so save the secret it stands in.
  const std::string searched = text::withBytesOutsideUtf8Replaced(commandLine, '?');
  std::string redacted;
  std::size_t end = 0;
  re2::StringPiece match;
  while (secretFlag().Match(searched, end, searched.size(), RE2::UNANCHORED, &match, 1)) {
    const auto start = static_cast<std::size_t>(match.data() - searched.data());
    redacted.append(commandLine, end, start - end).append(kRedacted);
    end = start + match.size();
  }
  return redacted.append(commandLine, end);
}

}  // namespace ProcessScanner
