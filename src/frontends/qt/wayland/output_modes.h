#pragma once

#include <QSize>
#include <vector>

/// How a compositor drives a screen.
struct OutputMode {
  QSize pixels;   // as it stands: turned by a quarter, height and width are exchanged
  int scale = 1;  // pixels a point, rounded up
};

/// Those of all screens, on Wayland; empty elsewhere, and where the program was built without what
/// it takes to ask.
[[nodiscard]] std::vector<OutputMode> outputModes();
