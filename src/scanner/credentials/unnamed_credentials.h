#pragma once

#include <string_view>

namespace credentials {

/// Whether an argument that has no name is a credential: one random word in base64, of 40 to 512
/// characters, with a "+" in it or a "=" at its end. `before`: the argument before it, which may
/// say that it is none.
bool isUnnamedCredential(std::string_view argument, std::string_view before);

}  // namespace credentials
