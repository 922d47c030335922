#pragma once

#include "frontends/qt/color_scheme.h"

/// Gives all windows colours of that scheme: those of the desktop's own theme where they are such,
/// or where there is no preference.
void useColorScheme(ColorScheme scheme);
