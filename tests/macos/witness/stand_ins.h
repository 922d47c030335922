// What the edition uses of Apple's AppKit and GNUstep's lacks. Included before each source.
#pragma once

#import <AppKit/AppKit.h>

static const NSAlertStyle NSAlertStyleWarning = NSWarningAlertStyle;

@interface NSMenu (StandIn)
- (void)removeAllItems;
@end

@interface NSMenuItem (StandIn)
- (NSView*)view;
- (void)setView:(NSView*)view;
- (NSString*)accessibilityLabel;
- (void)setAccessibilityLabel:(NSString*)label;
@end

@interface NSWorkspace (StandIn)
- (BOOL)accessibilityDisplayShouldIncreaseContrast;
@end

@interface NSColor (StandIn)
+ (NSColor*)labelColor;
@end
