#pragma once

#include <string>
#include <string_view>

namespace text {

/// `text`, which must be valid UTF-8, with one blank in place of every run of characters that look
/// blank: Unicode's spaces of any width, letters and symbols that look like a space (Hangul
/// fillers, the empty Braille pattern), and the invisible characters between them (joiners,
/// variation selectors).
std::string withSingleBlanks(std::string_view text);

}  // namespace text
