#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "text/text_span.h"

namespace credentials {

/// Appends, in no particular order, what programs take as a credential in ways of their own:
/// - well-known ones ("mysql -pV", "curl -u user:V", "vault login V"), behind whatever carries them
///   (sudo, env, docker exec, ssh), and in the commands that an argument holds ("sh -c …");
/// - all others by the options that most use for a user and a password ("-u user -p V").
/// Linear in the length of the arguments.
void appendProgramCredentials(std::span<const std::string_view> arguments,
                              std::vector<ArgumentSpan>& found);

}  // namespace credentials
