#pragma once

#import <AppKit/AppKit.h>

/// The application object. Ends the program at once if there is none.
NSApplication* sharedApplication();
