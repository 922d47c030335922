#pragma once

#include <string>

/// Whether each window with that title has asked to be kept off task bars; false when there
/// is none.
bool keepsOffTaskbar(const std::string& display, const std::string& title);

/// Says, as a window manager does, that all below that line of the screen belongs to a panel.
void leaveRoomForPanel(const std::string& display, int line);

/// Asks each window with that title to close, as a window manager does for its close button.
void closeWindow(const std::string& display, const std::string& title);
