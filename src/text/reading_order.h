#pragma once

#include <string>

/// Rows whose parts stand in a fixed order, where a part may be in a script that is written from
/// right to left.
namespace text {

/// What stands between the parts of a row.
inline constexpr const char* kPartSeparator = "  ·  ";

/// `row` so that whoever lays it out puts its parts from left to right: one that begins with a
/// name in Hebrew would be turned around, and show its figure first. Marks that are not seen
/// (U+200E) are added for that where they are needed; a row in other scripts stays as it is.
std::string partsLeftToRight(std::string row);

}  // namespace text
