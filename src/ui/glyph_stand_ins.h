#pragma once

#include <functional>
#include <string>
#include <string_view>

/// `text`, in UTF-8, with ASCII in place of those of the program's own glyphs that `isDrawn`
/// denies: fonts and terminals lack some. "★" becomes "*". `isDrawn` is asked about nothing else,
/// and each time that one occurs. All other text stays as it is.
std::string withStandIns(std::string_view text,
                         const std::function<bool(std::string_view glyph)>& isDrawn);
