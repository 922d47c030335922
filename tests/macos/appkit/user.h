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

/// Sends an item's action, as a choice of it does; a disabled item sends nothing. The menu still
/// fades then.
void sendAction(NSMenuItem* item);
/// The same, and turns the run loop.
void choose(NSMenuItem* item);

/// One turn of the main run loop in its default mode: menus are gone from the screen, then what
/// was to be performed after no delay is performed.
void turnRunLoop();

/// Fires every repeating timer that is still valid, once.
void fireTimers();

}  // namespace appkit
