#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "ui/settings_layout.h"

/// A window with these lines, not yet on screen; autoreleased. Closing it only hides it.
NSWindow* settingsWindow(const std::vector<SettingsView::Line>& lines);
