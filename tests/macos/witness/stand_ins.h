// What the edition uses of Apple's AppKit and GNUstep's lacks. Included before each source.
#pragma once

#import <AppKit/AppKit.h>

static const NSAlertStyle NSAlertStyleWarning = NSWarningAlertStyle;

@interface NSApplication (StandIn)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
@end

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
+ (NSColor*)tertiaryLabelColor;
@end

typedef NSString* NSFontTextStyle;
static const NSFontTextStyle NSFontTextStyleTitle2 = @"title2";
static const NSFontTextStyle NSFontTextStyleBody = @"body";
static const NSFontTextStyle NSFontTextStyleCaption1 = @"caption1";
static const NSFontTextStyle NSFontTextStyleCaption2 = @"caption2";

@interface NSFont (StandIn)
+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style options:(NSDictionary*)options;
@end

@interface NSTextField (StandIn)
+ (NSTextField*)wrappingLabelWithString:(NSString*)string;
- (void)setPreferredMaxLayoutWidth:(CGFloat)width;
@end

@interface NSView (StandIn)
- (void)setTranslatesAutoresizingMaskIntoConstraints:(BOOL)flag;
@end

typedef NS_ENUM(NSInteger, NSStackViewGravity) { NSStackViewGravityTop = 1 };

/// Only what a column from the top needs.
@interface NSStackView : NSView {
 @private
  NSEdgeInsets edgeInsets_;
  CGFloat spacing_;
  NSMutableDictionary* customSpacings_;
}
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property NSEdgeInsets edgeInsets;
@property CGFloat spacing;
+ (instancetype)stackViewWithViews:(NSArray*)views;
- (void)addView:(NSView*)view inGravity:(NSStackViewGravity)gravity;
- (void)setCustomSpacing:(CGFloat)spacing afterView:(NSView*)view;
@end
