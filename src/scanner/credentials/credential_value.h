#pragma once

#include <string_view>

/// What stands where the value of a credential could.
namespace CredentialValue {

/// Whether it gives nothing away: true, no, none, …
bool isPlain(std::string_view value);

/// Whether it is the next option rather than a value: "--port", "-m".
bool isOption(std::string_view text);

/// Whether it is a scheme of the Authorization header, which stands before the credential.
bool isScheme(std::string_view word);

/// Whether it is base64 of the kind that user:password makes, not a word.
bool looksEncoded(std::string_view text);

}  // namespace CredentialValue
