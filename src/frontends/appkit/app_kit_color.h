#pragma once

#import <AppKit/AppKit.h>

#include "ui/color.h"

/// The colour as calibrated RGB; greys as calibrated white.
NSColor* nsColor(const Color& color);
