#pragma once

#include <string_view>
#include <vector>

#include "scanner/text_span.h"

namespace ProcessScanner {

/// What redactSecrets puts in the place of each match.
inline constexpr std::string_view kRedactedSecret = "--api-key •••";

/// The options named like a credential, each with its value, that redactSecrets replaces;
/// in order.
std::vector<TextSpan> secretMatches(std::string_view commandLine);

}  // namespace ProcessScanner
