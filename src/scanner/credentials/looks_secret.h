#pragma once

#include <string_view>

#include "scanner/credentials/credential_name.h"

namespace credentials {

/// Whether `value` may be a secret, given the kind of its name. Not secrets are harmless values
/// (harmless_values.h) and, of most kinds, addresses and short numbers.
bool mayBeSecret(std::string_view value, NameKind kind);

/// Whether it looks like a password, made up or generated, and not like a name, a version, an
/// address or a path.
bool looksSecret(std::string_view text);

/// Whether it is random, a long hexadecimal number or a UUID.
bool looksLikeKey(std::string_view text);

/// Whether it is the next option rather than a value: "--port", "-m".
bool looksLikeOption(std::string_view text);

/// Whether it is a scheme of the Authorization header, which stands before the credential.
bool isScheme(std::string_view word);

/// Whether it looks like the base64 of user:password, and not like a word.
bool looksEncoded(std::string_view text);

/// Whether it is a sentence of several words and not a value.
bool isProse(std::string_view text);

}  // namespace credentials
