#pragma once

#include <string>
#include <string_view>

/// A title of the menu as a screen reader should speak it: words in place of the program's own
/// glyphs, commas in place of what separates a row's parts, no rules around headings. The title is
/// safe to show, as menus hold them.
std::string spokenText(std::string_view title);
