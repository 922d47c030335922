#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "text/text_span.h"

namespace credentials {

/// A part of one of several arguments.
struct ArgumentSpan {
  std::size_t argument = 0;
  TextSpan span;
};

/// Appends, in no particular order, what well-known programs take as a credential in their own
/// ways ("mysql -pV", "curl -u user:V", "vault login V"), also when another program runs them
/// (sudo, env, docker exec, ssh) or an argument holds the command ("sh -c …"). Linear in the
/// length of the arguments.
void appendProgramCredentials(std::span<const std::string_view> arguments,
                              std::vector<ArgumentSpan>& found);

}  // namespace credentials
