#pragma once

#include <string>
#include <string_view>

namespace text {

/// `text`, which is valid UTF-8, with one blank for every run of blanks: of Unicode's spaces,
/// whatever their width, of the letters and other characters that look like one (Hangul fillers,
/// the empty Braille pattern), and of what is not seen between them (joiners, variation selectors).
std::string withSingleBlanks(std::string_view text);

}  // namespace text
