#pragma once

#include <string>

#include "ui/menu.h"

/// What a screen reader says of an item: "Ollama Server, 4.9 GB, model server, protected". Glyphs
/// and separators become words or pauses; the strip is described.
std::string spokenTitle(const MenuItem& item);
