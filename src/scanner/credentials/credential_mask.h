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
/// Text without a credential comes out as it went in. All of it is linear in its length. A value
/// whose end is missing is masked to the end of the text, and so is what comes behind thousands
/// of names, arguments or commands, which only who wants the search to take long has.
///
/// There are two maskers. The specified one, ProcessScanner::redactSecrets, knows seven options
/// and puts one and the same text in the place of option and value; what it makes of a line is
/// shown to the character. It leaves most secrets where they are, and takes one word of a value
/// that has several; hence this one. The order: the mask finds its values in the raw arguments,
/// where they are still told apart; the pattern finds its matches in the raw line; the matches
/// are replaced first, and of the values what no match covers is masked then. Neither looks at
/// what the other has made.
namespace CredentialMask {

/// What stands for a value.
inline constexpr std::string_view kMask = "•••";

/// A line whose arguments are no longer told apart, with the values masked.
[[nodiscard]] std::string maskedLine(std::string_view line);

/// What of a process's arguments may be shown.
struct Shown {
  /// The arguments with the values masked; none, and nothing allocated, when they hold no
  /// credential. A value is one whole argument, or the whole rest of one, blanks included.
  std::optional<std::vector<std::string>> arguments;
  /// What ProcessScanner::redactSecrets makes of the line, to the character, for what its
  /// pattern matches; the values that the pattern leaves in clear are masked.
  std::string commandLine;
};

/// `joined`: the arguments, joined by single blanks.
[[nodiscard]] Shown shown(std::span<const std::string_view> arguments, std::string_view joined);

}  // namespace CredentialMask
