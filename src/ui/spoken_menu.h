#pragma once

#include <string>
#include <string_view>

#include "ui/menu.h"

// What a screen reader says of the menu: words or pauses in place of the program's own glyphs and
// separators, no rules around headings, single blanks. Texts are safe to show, as menus hold them.

/// Any title, where nothing more is known: "AI workload: Ollama Server, 2.0 GB".
std::string spokenText(std::string_view title);

/// An item: "Ollama Server, 4.9 GB, model server, protected"; the strip is described.
std::string spokenTitle(const MenuItem& item);
