#pragma once

#include "ui/color.h"

/// How scarce memory is, as the strip's marker tells it.
enum class PressureLevel {
  low,     ///< less than 55 % of all memory is used
  medium,  ///< less than 80 %
  high,    ///< 80 % or more
};

/// The level of a pressure: used memory divided by all memory, 0 to 1.
PressureLevel pressureLevel(double pressure);

/// The marker's colour. It lets through what it is drawn over.
Color pressureColor(PressureLevel level);
