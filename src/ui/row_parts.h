#pragma once

#include <string>

/// The parts that a menu's row is made of: a name, a figure, a state. They stand in a fixed order,
/// and a name may be in a script that is written from right to left.
namespace RowParts {

/// What stands between them.
inline constexpr const char* kSeparator = "  ·  ";

/// `row` so that whoever lays it out puts its parts from left to right: one that begins with a
/// name in Hebrew would be turned around, and show its figure first. Marks that are not seen
/// (U+200E) are added for that where they are needed; a row in other scripts stays as it is.
std::string leftToRight(std::string row);

}  // namespace RowParts
