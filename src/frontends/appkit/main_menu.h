#pragma once

#import <AppKit/AppKit.h>

/// The main menu. A program without a Dock icon never shows it; it is there for its keyboard
/// shortcuts. Command-comma sends `showSettings` to the target, Command-Q `quit`; Command-W closes
/// the window.
NSMenu* mainMenu(id target, SEL showSettings, SEL quit);
