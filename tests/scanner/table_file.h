#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the tables of command lines in tests/ are made of: lines of columns with tabs between
/// them, arguments as a JSON array of strings.

/// The parts of `text` that `between` separates; all of it where it has none.
std::vector<std::string> splitAt(const std::string& text, char between);

/// Throws std::runtime_error when `text` does not begin with an array of strings.
std::vector<std::string> readStringArray(std::string_view text);
