#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Keeps credentials out of everything that is shown: the one door to this folder. The value
/// of a credential becomes "•••", the name that it goes by stays:
/// - the value of what is named like one: an option, variable, header, field or setting;
/// - what a well-known program takes as one in a way of its own ("mysql -pV", "curl -u user:V");
/// - the password or token of a URL;
/// - keys and tokens that their format gives away, private keys, webhooks, wherever they stand;
/// - long random values of what is not known to be harmless.
/// Text without a credential comes out as it went in. All of it is linear in its length; a
/// value whose end is missing is masked to the end of the text.
///
/// There are two maskers. The specified one, ProcessScanner::redactSecrets, knows seven options
/// by one pattern, and puts one and the same text in the place of option and value; what it
/// makes of a line is shown to the character. It leaves most secrets where they are, so this
/// mask finds them in the raw arguments, and masks them first in order of effect: both look at
/// the raw text, never at what the other has made of it, and what both find is shown as the
/// pattern's. The mask alone decides what the arguments show that naming is given.
namespace CredentialMask {

/// What stands for a value.
inline constexpr std::string_view kMask = "•••";

/// The arguments with the values masked; none, and nothing allocated, when they hold no
/// credential. A value is one whole argument, or the whole rest of one, blanks included.
std::optional<std::vector<std::string>> maskedArguments(
    std::span<const std::string_view> arguments);

/// A line whose arguments are no longer told apart, with the values masked.
std::string maskedLine(std::string_view line);

/// What of a process's arguments may be shown.
struct Shown {
  /// None when they hold no credential: they may be shown as they are.
  std::optional<std::vector<std::string>> arguments;
  /// What ProcessScanner::redactSecrets makes of the line, to the character, for what its
  /// pattern matches; the values that the pattern leaves in clear are masked.
  std::string commandLine;
};

/// `joined`: the arguments, joined by single blanks.
Shown shown(std::span<const std::string_view> arguments, std::string_view joined);

}  // namespace CredentialMask
