#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

/// What a user sees and does.
namespace appkit {

/// The one status item; nil when there is none, or several.
NSStatusItem* statusItem();

/// The one window on screen; nil when there is none.
NSWindow* visibleWindow();

/// What is drawn in an image.
std::vector<std::string> drawingIn(NSImage* image);

std::vector<std::string> titles(NSMenu* menu);

/// The item whose title begins like this; nil when there is none.
NSMenuItem* itemTitled(NSMenu* menu, const std::string& beginning);

/// Opens and closes a menu: its delegate hears of it as AppKit lets it hear.
void open(NSMenu* menu);
void close(NSMenu* menu);

/// Sends an item's action, as a choice of it does; a disabled item sends nothing.
void choose(NSMenuItem* item);

/// Fires every timer that is still valid, once.
void fireTimers();

}  // namespace appkit
