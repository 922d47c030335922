#pragma once

#include <string>
#include <string_view>

/// Text that somebody else chose (a process's name, a file's), made safe to show.
/// Whatever could make it look like something that it is not becomes U+FFFD:
/// - bytes that are not UTF-8, one sign each;
/// - control characters (C0, DEL, C1), which break lines and steer terminals;
/// - line and paragraph separators (U+2028, U+2029);
/// - format characters, which are invisible and reorder or hide what stands around them:
///   bidirectional marks, overrides, embeddings and isolates, byte order marks, zero width
///   spaces, soft hyphens, language tags.
/// Kept are the format characters that writing needs: the joiners U+200C and U+200D, which
/// emoji and many scripts are spelt with, and the visible number signs of Arabic and of
/// other scripts. Variation selectors and combining marks are no format characters.
namespace text {

/// `text` as one harmless line.
std::string displayLine(std::string_view text);

/// As above, but a line feed stays one: for a text whose lines are the program's own.
std::string displayLines(std::string_view text);

}  // namespace text
