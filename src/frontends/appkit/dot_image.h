#pragma once

#import <AppKit/AppKit.h>

#include "ui/color.h"

/// The dot of a process's row in this colour (ui/dot.h); autoreleased.
NSImage* dotImage(const Color& color);
