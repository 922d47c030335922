#pragma once

#include <string>

#include "ui/menu.h"

/// The menu as a line for a status bar: one JSON object, ended by "\n", in ASCII. `text` (and, as
/// i3bar and i3blocks call it, `full_text`) is the used share of memory, `percentage` the same as a
/// number, `class` the pressure ("low", "medium", "high"), `tooltip` the summary and the largest
/// processes, one a line.
std::string barJson(const Menu& menu);
