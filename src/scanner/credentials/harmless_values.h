#pragma once

#include <string_view>

/// Values that are no secrets, whatever they are called.
namespace credentials {

/// Whether it is no secret: a plain word ("true", "none"), a reference, a path, a pattern.
bool isNothing(std::string_view value);

/// Whether it only says where the secret is ("$TOKEN", "env:TOKEN", "<token>"), or stands for it
/// ("***").
bool isReference(std::string_view value);

/// Whether it is the tag in "image:tag", so that the name before it has no secret value.
bool isTag(std::string_view value);

/// Whether it is a path or the name of a file.
bool isPath(std::string_view text);

}  // namespace credentials
