#pragma once

#include <string_view>
#include <vector>

#include "scanner/text_span.h"

namespace credentials {

/// Appends what is a credential by its look alone, wherever it stands: the keys and tokens that
/// begin as their makers' do and go on in the right letters for long enough, JSON web tokens,
/// private keys in PEM, and the secret part of webhooks' URLs. In order. Linear in the length
/// of the text. A private key whose end is missing is taken to the end of the text, and so is
/// all behind the 4,000th place that begins like a credential.
void appendCredentialFormats(std::string_view text, std::vector<TextSpan>& found);

}  // namespace credentials
