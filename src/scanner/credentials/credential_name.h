#pragma once

#include <string_view>

namespace credentials {

/// What the value is of something that goes by a name.
enum class NameKind {
  unknown,         ///< the name says nothing of credentials
  harmless,        ///< no secret, however it looks: an id, a hash, a path, a field to sort by
  password,        ///< any text, numbers too
  code,            ///< a password of digits for the most part: a PIN
  token,           ///< any text but a short number
  webhook,         ///< a URL that lets everybody in who knows it
  authentication,  ///< a token, or how somebody authenticates ("basic", "none")
  key,             ///< of a lock, or of a table or keyboard: a secret where it looks like one
  anyKey,          ///< nothing but "key": any text but what is sorted by, or pressed
  login,           ///< a user's name, or a token in its place
  account,         ///< a user's name; behind a colon a password may follow
  unclear,         ///< a secret where it certainly looks like one
};

/// The kind of what goes by this name: the name of an option ("--hf-token"), a variable
/// ("OPENAI_API_KEY"), a header ("X-Api-Key"), a field ("apiKey") or a setting ("auth.password").
/// Its end decides, whatever the case and the separators.
NameKind kindOf(std::string_view name);

/// Whether a value behind this name is masked in some cases at least.
constexpr bool isCredential(NameKind kind) {
  return kind != NameKind::unknown && kind != NameKind::harmless;
}

/// Whether an option of this name has no value of its own behind it: "--no-auth",
/// "--ask-password", "--use-token".
bool isSwitch(std::string_view name);

}  // namespace credentials
