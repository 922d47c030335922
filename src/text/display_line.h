#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Makes text that somebody else chose, such as the name of a process or a file, safe to show.
///
/// Everything by which it could look like something else becomes U+FFFD:
/// - bytes that are not UTF-8, one U+FFFD for each;
/// - control characters (C0, DEL, C1), which break lines and steer terminals;
/// - line and paragraph separators (U+2028, U+2029);
/// - format characters, which are invisible and reorder or hide what stands around them:
///   bidirectional marks, overrides, embeddings and isolates, byte order marks, zero width
///   spaces, soft hyphens, language tags.
/// Kept are the format characters that writing needs: the joiners U+200C and U+200D, which
/// emoji and many scripts are spelt with, and the visible number signs of Arabic and of
/// other scripts. Variation selectors and combining marks are no format characters.
///
/// A "character" (unicode.h) may be a letter with a hundred thousand marks on it, and toolkits
/// take minutes to lay that out. Only kMostCharacterBytes of each are shown: the longest that
/// anybody writes, a couple of emoji with skin tones, has 35. A cut character that would join with
/// the next one becomes U+FFFD.
namespace text {

inline constexpr std::size_t kMostCharacterBytes = 64;  ///< in every text that is shown
inline constexpr std::size_t kMostNameBytes = 1024;     ///< in every name that is shown
/// In every text that is shown: more than a command line's details.
inline constexpr std::size_t kMostTextBytes = 16 * std::size_t{1024};

/// `text` as one harmless line of at most kMostTextBytes: of a longer text as many characters as
/// fit, and "…".
[[nodiscard]] std::string displayLine(std::string_view text);

/// As displayLine, but keeps line feeds: for texts whose line breaks are the program's own.
[[nodiscard]] std::string displayLines(std::string_view text);

/// As displayLine, for the name of a process, a user, a product or a service, of which at most
/// kMostNameBytes are shown. If it begins with a combining mark, U+25CC (a dotted circle) is put
/// before it, so that the mark is not drawn on the program's own text.
[[nodiscard]] std::string displayName(std::string_view text);

}  // namespace text
