#pragma once

#include "ui/color.h"

// How scarce memory is, as the strip's right end tells it. A pressure is used memory divided by all
// memory, 0 to 1.

enum class PressureLevel {
  low,     ///< less than 55 % of all memory is used
  medium,  ///< less than 80 %
  high,    ///< 80 % or more
};

PressureLevel pressureLevel(double pressure);

/// Green, yellow or red. It lets through what it is drawn over.
Color pressureColor(PressureLevel level);

/// "low", "medium" or "high".
const char* pressureWord(PressureLevel level);

/// In whole percent; half a percent goes to the even neighbour.
long percentUsed(double pressure);
