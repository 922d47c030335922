#pragma once

#import <AppKit/Drawing.h>
#import <Foundation/Foundation.h>

@protocol NSAccessibility
@property(copy) NSString* accessibilityLabel;
@end

@interface NSResponder : NSObject
@end

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) {
  NSViewWidthSizable = 2,
};

@interface NSView : NSResponder <NSAccessibility> {
  NSRect frame_;
  NSAutoresizingMaskOptions autoresizingMask_;
  BOOL needsDisplay_;
  BOOL translatesAutoresizingMaskIntoConstraints_;
  NSString* toolTip_;
  NSString* accessibilityLabel_;
}
@property NSRect frame;
@property NSRect bounds;
@property NSAutoresizingMaskOptions autoresizingMask;
@property BOOL needsDisplay;
@property BOOL translatesAutoresizingMaskIntoConstraints;
@property(readonly) NSSize intrinsicContentSize;
@property(copy) NSString* toolTip;
- (instancetype)initWithFrame:(NSRect)frameRect;
@property(readonly, getter=isFlipped) BOOL flipped;
- (void)drawRect:(NSRect)dirtyRect;
@end

@interface NSControl : NSView {
  NSString* stringValue_;
  NSFont* font_;
}
@property(copy) NSString* stringValue;
@property(copy) NSFont* font;
@end

@interface NSTextField : NSControl {
  NSColor* textColor_;
  CGFloat preferredMaxLayoutWidth_;
}
@property(copy) NSColor* textColor;
@property CGFloat preferredMaxLayoutWidth;
+ (instancetype)wrappingLabelWithString:(NSString*)stringValue;
@end

@interface NSButton : NSControl {
  NSString* title_;
  NSImage* image_;
}
@property(copy) NSString* title;
@property(retain) NSImage* image;
@end

typedef NS_ENUM(NSInteger, NSUserInterfaceLayoutOrientation) {
  NSUserInterfaceLayoutOrientationHorizontal = 0,
  NSUserInterfaceLayoutOrientationVertical = 1
};

typedef NS_ENUM(NSInteger, NSLayoutAttribute) {
  NSLayoutAttributeLeading = 5,
};

typedef NS_ENUM(NSInteger, NSStackViewGravity) {
  NSStackViewGravityTop = 1,
};

@interface NSStackView : NSView {
  NSMutableArray* views_;
  NSMutableDictionary* customSpacings_;
  NSUserInterfaceLayoutOrientation orientation_;
  NSLayoutAttribute alignment_;
  NSEdgeInsets edgeInsets_;
  CGFloat spacing_;
}
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property NSEdgeInsets edgeInsets;
@property CGFloat spacing;
@property(readonly, copy) NSArray* views;
+ (instancetype)stackViewWithViews:(NSArray*)views;
- (void)addView:(NSView*)view inGravity:(NSStackViewGravity)gravity;
- (NSArray*)viewsInGravity:(NSStackViewGravity)gravity;
- (void)setCustomSpacing:(CGFloat)spacing afterView:(NSView*)view;
- (CGFloat)customSpacingAfterView:(NSView*)view;
@end
