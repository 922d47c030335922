#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The words of the first command in a value of ExecStart=, cut as systemd does: at blanks
/// outside of quotes, with C-like escapes, up to a word ";". The prefixes of the command
/// (- @ : + !) are dropped, and so are words that are not UTF-8. Specifiers and variables
/// stay as written. None when a quote is not closed: systemd ignores such a value.
std::optional<std::vector<std::string>> commandWords(std::string_view value);

}  // namespace platform
