#pragma once

#import <AppKit/AppKit.h>

#include "macos/appkit/record.h"

/// What the doubles tell each other.
namespace appkit {

/// From now on, notes every timer that is added to a run loop.
void watchTimers();

/// Invalidates every timer that was added, so that none lives on into the next test.
void forgetTimers();

NSString* fileOf(NSImage* image);

}  // namespace appkit
