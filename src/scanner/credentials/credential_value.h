#pragma once

#include <string_view>

#include "scanner/credentials/credential_name.h"

namespace credentials {

/// Whether `value` may be a secret, given the kind of its name. These are not secrets: plain words
/// ("true", "none"), paths and names of files, references to where the secret is ("$TOKEN",
/// "env:TOKEN", "@file"), placeholders, patterns, short numbers.
bool mayBeSecret(std::string_view value, NameKind kind);

/// Whether it only says where the secret is ("$TOKEN", "env:TOKEN", "<token>"), or stands for it
/// ("***").
bool isReference(std::string_view value);

/// Whether it is no secret whatever its name is: a plain word, a reference, a path, a pattern.
bool isNothing(std::string_view value);

/// Whether it looks like a password, made up or generated, and not like a name, a version, an
/// address or a path.
bool looksSecret(std::string_view text);

/// Whether it is random, a long hexadecimal number or a UUID.
bool looksLikeKey(std::string_view text);

/// Whether it is a path or the name of a file.
bool isPath(std::string_view text);

/// Whether it is the next option rather than a value: "--port", "-m".
bool isOption(std::string_view text);

/// Whether it is a scheme of the Authorization header, which stands before the credential.
bool isScheme(std::string_view word);

/// Whether it looks like the base64 of user:password, and not like a word.
bool looksEncoded(std::string_view text);

/// Whether it is a sentence of several words and not a value.
bool isProse(std::string_view text);

}  // namespace credentials
