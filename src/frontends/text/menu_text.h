#pragma once

#include <string>

#include "ui/memory_pressure_view.h"
#include "ui/menu.h"

/// What the reader's screen can show.
enum class CharacterSet { unicode, ascii };

/// The menu as plain text for people, one line an item, each ended by "\n"; submenus and the
/// commands at the end are left out. A separator is an empty line. A process's line goes on with
/// "  ·  pid N", the letter of its segment in the strip ("  [A]") if it has one, and, where it is
/// somebody else's, "  ·  owner NAME". The figures of a section stand below each other. A title is
/// always one harmless line, and a name in it that others chose never has two blanks in a row, so
/// that it can't imitate the columns.
std::string menuText(const Menu& menu, CharacterSet characters = CharacterSet::unicode);

/// The strip as text: "[AAAAABBC···]  58%". Each segment is a run of one letter (A, B, C … from
/// left to right), as many of the 40 cells as its share of the track, rounded down, but at
/// least one; what would stand beyond the last cell is cut off. The percentage is the
/// used share of all memory. A second line, which ends in "GPU", is that of the cards, where there
/// are any: who is in both has one letter.
std::string stripText(const MemoryPressureView& strip);
