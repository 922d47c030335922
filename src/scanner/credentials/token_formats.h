#pragma once

#include <string_view>
#include <vector>

#include "text/text_span.h"

namespace credentials {

/// Appends, in order, what is a credential by its format alone: keys and tokens with a maker's
/// prefix and enough of the right characters behind it, JSON web tokens, private keys in PEM, and
/// the secret part of webhooks' URLs. Linear in the length of the text. A private key without an
/// end is taken to the end of the text, and so is everything after the 4,000th place that begins
/// like a credential.
void appendTokens(std::string_view text, std::vector<TextSpan>& found);

}  // namespace credentials
