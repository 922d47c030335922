#pragma once

#import <AppKit/AppKit.h>

/// The application object. Without one nothing can go on: the program stops at once.
NSApplication* sharedApplication();
