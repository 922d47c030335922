#pragma once

#include <string>

/// Whether each window with that title has asked to be kept off task bars; false when there
/// is none.
bool keepsOffTaskbar(const std::string& display, const std::string& title);

/// Asks each window with that title to close, as a window manager does for its close button.
void closeWindow(const std::string& display, const std::string& title);
