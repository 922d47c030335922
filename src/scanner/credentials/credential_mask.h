#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Keeps credentials out of everything that is shown; all other rooms use this folder through this
/// header. The value of a credential becomes "•••", its name stays:
/// - the value of an option, variable, header, field or setting that is named like a credential;
/// - what well-known programs take as a credential in their own ways ("mysql -pV", "curl -u
///   user:V");
/// - the password or token of a URL;
/// - keys and tokens that are recognised by their format, private keys, webhooks, anywhere;
/// - long random values of what is not known to be harmless.
/// Text without a credential stays as it is. Everything is linear in the length of the text. A
/// value whose end is missing is masked to the end of the text. So is everything after thousands
/// of names, arguments or commands: only somebody who wants to slow the search down passes so
/// many.
///
/// There are two maskers. ProcessScanner::redactSecrets, whose output is fixed to the character,
/// knows six names of options and replaces option and value by one text. It misses most secrets,
/// and takes only the first word of a value with several; hence this second one. Both search the
/// original: the mask the arguments, which are still separate there, and redactSecrets' pattern the
/// line. Then the pattern's matches are replaced, and those of the mask's values that no match
/// covers are masked. Neither sees the other's output.
namespace CredentialMask {

/// What stands for a value.
inline constexpr std::string_view kMask = "•••";

/// A line in which the arguments can't be told apart any more, with the values masked.
[[nodiscard]] std::string maskedLine(std::string_view line);

/// What of a process's arguments may be shown.
struct Shown {
  /// The arguments with the values masked; none, and nothing allocated, when they hold no
  /// credential. A value is one whole argument, or the whole rest of one, blanks included.
  std::optional<std::vector<std::string>> arguments;
  /// The line. What redactSecrets' pattern matches is exactly as redactSecrets shows it; the
  /// values that the pattern leaves in clear are masked.
  std::string commandLine;
};

/// `joined`: the arguments, joined by single blanks.
[[nodiscard]] Shown shown(std::span<const std::string_view> arguments, std::string_view joined);

}  // namespace CredentialMask
