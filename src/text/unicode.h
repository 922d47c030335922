#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Unicode text in UTF-8. A "character" is an extended grapheme cluster, what a reader sees as one
/// character, so that a cut never splits an accent or an emoji. Bytes that are not UTF-8 are
/// passed through unchanged and count as a character each.
namespace text {

/// Whether the bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);

/// The bytes, with U+FFFD in place of each that is not part of well-formed UTF-8.
std::string repairedUtf8(std::string_view bytes);

/// Lower case by Unicode's simple mapping, scalar by scalar.
std::string lowered(std::string_view text);

/// Appends lowered(text) to `out`, which keeps its capacity between uses.
void appendLowered(std::string_view text, std::string& out);

/// `text` with `substitute` in place of every byte that is not UTF-8; the length stays the same.
std::string withBytesOutsideUtf8Replaced(std::string_view text, char substitute);

/// How many characters the text has.
std::size_t characterCount(std::string_view text);

/// The first `count` characters of `text`, or all of it when it has fewer.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// At most the first `limit` bytes of `text`, which is UTF-8: no scalar of it is cut.
std::string_view withinBytes(std::string_view text, std::size_t limit);

/// `text` when it has at most `limit` characters; else its first `kept` characters and "…".
std::string shortened(std::string_view text, std::size_t limit, std::size_t kept);

}  // namespace text
