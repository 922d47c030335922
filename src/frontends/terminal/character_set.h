#pragma once

#include <string_view>

namespace terminal {

/// Takes the character set of the user's locale (LC_CTYPE alone: figures look the same in every
/// locale) and tells whether it is UTF-8. A locale that is named as UTF-8 counts as that, even
/// where it was never generated.
bool takeCharacterSet();

/// Whether the name of a locale, as LC_ALL, LC_CTYPE or LANG have it, says UTF-8: "de_DE.utf8".
bool namesUtf8(std::string_view locale);

}  // namespace terminal
