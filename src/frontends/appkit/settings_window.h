#pragma once

#import <AppKit/AppKit.h>

/// A window with the texts of SettingsView, not yet on screen; autoreleased. Closing it only
/// hides it.
NSWindow* settingsWindow();
