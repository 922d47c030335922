#pragma once

#import <AppKit/AppKit.h>

#include "ui/color.h"

/// The coloured dot of a process's row, 12 points square; autoreleased.
NSImage* dotImage(const Color& color);
