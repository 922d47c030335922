#include "scanner/credentials/unnamed_credentials.h"

#include <algorithm>

#include "scanner/credentials/credential_name.h"
#include "scanner/credentials/harmless_values.h"
#include "scanner/credentials/looks_secret.h"
#include "text/ascii.h"

namespace credentials {

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

}  // namespace credentials
