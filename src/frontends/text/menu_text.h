#pragma once

#include <string>

#include "ui/memory_pressure_view.h"
#include "ui/menu.h"

/// The menu as plain text, one line an item, each ended by "\n"; submenus are left out. A
/// separator is an empty line. A process's line ends in "  ·  pid N" and, when the process has a
/// segment in the strip, in the segment's letter: "  [A]". A title is always one harmless line,
/// and a name in it that others chose never has two blanks in a row, so that it can't imitate the
/// columns.
std::string menuText(const Menu& menu);

/// The strip as text: "[AAAAABBC···]  58%". Each segment is a run of one letter (A, B, C … from
/// left to right), as many of the 40 cells as its share of the track, rounded down, but at
/// least one; what would stand beyond the last cell is cut off. The percentage is the
/// used share of all memory. A second line, which ends in "GPU", is that of the cards, where there
/// are any: who is in both has one letter.
std::string stripText(const MemoryPressureView& strip);
