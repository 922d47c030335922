#pragma once

#include <QPalette>
#include <optional>

#include "frontends/qt/appearance.h"

/// Gives all windows the colours that the user wants. Those are `chosen`, where the desktop tells
/// every single colour. Else black on white or white on black, where high contrast is wanted. Else
/// the theme's own, if they are as dark or light as wanted (or nothing is wanted), or our own.
void useColors(const Appearance& appearance, const std::optional<QPalette>& chosen = std::nullopt);

/// Whether the colours in use are those of high contrast.
[[nodiscard]] bool areOfHighContrast(const QPalette& palette);
