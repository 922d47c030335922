#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace credentials {

/// What kind of value something with this name has.
enum class NameKind {
  unknown,   ///< the name says nothing of credentials
  harmless,  ///< no secret, even if it looks like one: an id, a hash, a path, a field to sort by
  password,  ///< any text, numbers too
  code,      ///< a password that is mostly digits: a PIN
  token,     ///< any text but a short number
  webhook,   ///< a URL that is itself the secret
  authentication,  ///< a token, or how somebody authenticates ("basic", "none")
  key,      ///< to open or to find something, or of a keyboard: a secret if it looks like one
  anyKey,   ///< named just "key": a secret unless it is a field to sort by or a key to press
  login,    ///< a user's name, or a token in its place
  account,  ///< a user's name; behind a colon a password may follow
  unclear,  ///< a secret where it certainly looks like one
};

/// The kind of value that has this name: the name of an option ("--hf-token"), a variable
/// ("OPENAI_API_KEY"), a header ("X-Api-Key"), a field ("apiKey") or a setting ("auth.password").
/// The end of the name decides. Case and separators do not matter.
NameKind kindOf(std::string_view name);

/// The same for the name between two places of a text, where what stands around it counts too.
/// `object`: the kind of the object that holds the name, if one does.
NameKind kindIn(std::string_view text, std::size_t begin, std::size_t end,
                std::optional<NameKind> object);

/// Whether a value with such a name may have to be masked.
constexpr bool isCredential(NameKind kind) {
  return kind != NameKind::unknown && kind != NameKind::harmless;
}

/// Whether nearly every value with such a name is a secret.
constexpr bool isStrong(NameKind kind) {
  return kind == NameKind::password || kind == NameKind::token;
}

/// Whether an option of this name takes no value: "--no-auth", "--ask-password", "--use-token".
bool isSwitch(std::string_view name);

}  // namespace credentials
