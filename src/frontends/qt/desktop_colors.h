#pragma once

#include <QPalette>
#include <optional>

#include "frontends/qt/appearance.h"

/// Gives all windows colours as the user has asked for: `chosen` where the desktop tells each
/// single one, else those of the desktop's own theme where they are such, or where there is no
/// preference. High contrast is black on white or white on black.
void useColors(const Appearance& appearance, const std::optional<QPalette>& chosen = std::nullopt);

/// Whether the colours in use are those of high contrast.
[[nodiscard]] bool areOfHighContrast(const QPalette& palette);
