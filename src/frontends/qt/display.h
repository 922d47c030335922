#pragma once

#include <memory>

class QApplication;

/// Connects to the desktop's display: Wayland where there is one that answers, else X11.
/// When there is none, says so in one line on standard error and ends the program with
/// status 1, as it does when the display dies later. To be called once.
std::unique_ptr<QApplication> openDisplay();
