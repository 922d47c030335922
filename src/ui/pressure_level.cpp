#include "ui/pressure_level.h"

#include <cmath>

PressureLevel pressureLevel(double pressure) {
  if (pressure < 0.55) return PressureLevel::low;
  return pressure < 0.8 ? PressureLevel::medium : PressureLevel::high;
}

Color pressureColor(PressureLevel level) {
  switch (level) {
    case PressureLevel::low:
      return {0.2, 0.9, 0.45, 0.35};
    case PressureLevel::medium:
      return {0.95, 0.85, 0.2, 0.4};
    case PressureLevel::high:
      break;
  }
  return {1.0, 0.35, 0.3, 0.45};
}

const char* pressureWord(PressureLevel level) {
  switch (level) {
    case PressureLevel::low:
      return "low";
    case PressureLevel::medium:
      return "medium";
    case PressureLevel::high:
      break;
  }
  return "high";
}

long percentUsed(double pressure) {
  return std::lrint(pressure * 100);
}
