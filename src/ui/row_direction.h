#pragma once

#include <string>

/// The parts of a menu's row: a name, a figure, a state. Their order is fixed, even if a name is
/// in a script that is written from right to left.
namespace RowParts {

/// Separates the parts.
inline constexpr const char* kSeparator = "  ·  ";

/// `row` with invisible marks (U+200E) where they are needed to keep its parts from left to right.
/// Without them a row that begins with a Hebrew name would be laid out from right to left, the
/// figure first. Rows without such scripts are not changed.
std::string leftToRight(std::string row);

}  // namespace RowParts
