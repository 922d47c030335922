#pragma once

#import <AppKit/AppKit.h>

#include "ui/color.h"

/// The maker's badge out of the bundle, `side` points square; nil when there is none.
NSImage* halvekBadgeImage(CGFloat side);

/// The dot of a process's row in this colour (Dot); autoreleased.
NSImage* dotImage(const Color& color);
