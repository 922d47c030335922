#pragma once

#import <AppKit/AppKit.h>

/// The maker's badge out of the bundle, `side` points square; nil when there is none.
NSImage* halvekBadgeImage(CGFloat side);
