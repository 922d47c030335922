#pragma once

#include <string>

/// `row` with invisible marks (U+200E) where they are needed to keep its parts from left to right,
/// even if a name is in a script that is written from right to left. Without them a row that begins
/// with a Hebrew name would be laid out from right to left, the figure first. Rows without such
/// scripts are not changed.
std::string leftToRight(std::string row);
