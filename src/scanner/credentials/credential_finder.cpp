#include "scanner/credentials/credential_finder.h"

#include <re2/re2.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "scanner/credentials/credential_shapes.h"
#include "scanner/credentials/credential_value.h"
#include "scanner/credentials/named_credentials.h"
#include "scanner/credentials/url_passwords.h"

namespace CredentialFinder {
namespace {

NextArgument search(std::string_view text, bool isArgument, std::vector<TextSpan>& found) {
  const NextArgument next = appendNamedCredentials(text, isArgument, found);
  appendUrlPasswords(text, found);
  appendCredentialShapes(text, found);
  mergeSpans(found);
  return next;
}

/// Whether this argument is the value that the one before it announced.
bool isAnnounced(NextArgument announced, std::string_view argument) {
  return announced == NextArgument::headerValue ||
         (announced == NextArgument::value && !CredentialValue::isOption(argument));
}

}  // namespace

bool mayHoldCredential(std::string_view text) {
  static const RE2 pattern(
      "(?i:key|token|secret|passw|passphrase|pwd|auth|credential|bearer|basic|sshpass|[a-z]pass)"
      "|[_.-](?i:pass)|://|sk[_-]|rk_|hf_|gh[pousr]_|github_pat_|glpat-|xox|xapp-|AKIA|ASIA|AIza"
      "|gsk_|lsv2_|npm_|nvapi-|pplx-|r8_|xai-|eyJ",
      RE2::Latin1);
  if (!pattern.ok()) {
    std::fputs("vorda: the pattern for credentials does not compile\n", stderr);
    std::abort();
  }
  return RE2::PartialMatch(re2::StringPiece(text.data(), text.size()), pattern);
}

std::vector<InArgument> inArguments(std::span<const std::string_view> arguments) {
  std::vector<InArgument> all;
  NextArgument announced = NextArgument::anything;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    std::vector<TextSpan> found;
    if (isAnnounced(announced, argument)) {
      if (announced == NextArgument::headerValue && CredentialValue::isScheme(argument)) continue;
      announced = NextArgument::anything;
      if (!argument.empty() && !CredentialValue::isPlain(argument)) found = {{0, argument.size()}};
    } else {
      announced = NextArgument::anything;
      if (mayHoldCredential(argument)) announced = search(argument, true, found);
    }
    if (!found.empty()) all.push_back({i, std::move(found)});
  }
  return all;
}

std::vector<TextSpan> inLine(std::string_view line) {
  std::vector<TextSpan> found;
  if (mayHoldCredential(line)) search(line, false, found);
  return found;
}

}  // namespace CredentialFinder
