#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

/// Whether a text may be what a desktop calls an activation token (xdg-activation): proof for the
/// compositor that the user has clicked. Short, and harmless as an environment variable.
inline bool isActivationToken(std::string_view token) {
  constexpr std::size_t kLongest = 256;
  return !token.empty() && token.size() <= kLongest &&
         std::ranges::all_of(token, [](char c) { return c > ' ' && c <= '~'; });
}
