#pragma once

#include <string_view>
#include <vector>

#include "text/text_span.h"

namespace ProcessScanner {

/// The text by which redactSecrets replaces each match.
inline constexpr std::string_view kRedactedSecret = "--api-key •••";

/// The spans that redactSecrets replaces, in order: options named like a credential, each with its
/// value.
std::vector<TextSpan> secretMatches(std::string_view commandLine);

}  // namespace ProcessScanner
