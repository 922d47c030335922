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

/// What a view draws as large as it is, in the view's own coordinates, with y upwards: of a
/// flipped view they are turned over.
std::vector<std::string> drawn(NSView* view);

/// Opens and closes a menu, in AppKit's order: it needs an update, will open, is tracked; is no
/// longer tracked, did close, fades. A menu that isn't open is not closed.
void open(NSMenu* menu);
void close(NSMenu* menu);

/// Chooses an item: if its menu is open it closes, then the action is sent; a disabled item sends
/// nothing. The menu still fades then.
void sendAction(NSMenuItem* item);
/// The same, and turns the run loop.
void choose(NSMenuItem* item);

/// One turn of the main run loop in its default mode: menus are gone from the screen, then what
/// was to be performed after no delay is performed. While a menu or an alert is open the run loop
/// is in another mode, and nothing happens.
void turnRunLoop();

/// Fires every repeating timer that is still valid, once; while a menu or an alert is open, those
/// of the common modes.
void fireTimers();

}  // namespace appkit
