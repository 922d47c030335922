#pragma once

#import <AppKit/AppKit.h>

/// The main menu, which a program without a Dock icon never shows: it is there for its
/// keys. Command-comma sends `showSettings` to the target, Command-W closes the window.
NSMenu* mainMenu(id target, SEL showSettings);
