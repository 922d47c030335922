#pragma once

#import <Foundation/Foundation.h>

@interface NSColor : NSObject <NSCopying> {
  BOOL isWhite_;
  CGFloat components_[4];
  NSString* name_;
}
+ (NSColor*)colorWithCalibratedWhite:(CGFloat)white alpha:(CGFloat)alpha;
+ (NSColor*)colorWithCalibratedRed:(CGFloat)red
                             green:(CGFloat)green
                              blue:(CGFloat)blue
                             alpha:(CGFloat)alpha;
+ (NSColor*)labelColor;
+ (NSColor*)secondaryLabelColor;
+ (NSColor*)tertiaryLabelColor;
- (void)setFill;
- (void)setStroke;
@end

@interface NSGraphicsContext : NSObject
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end

@interface NSBezierPath : NSObject {
  NSRect rect_;
  CGFloat radius_;
  BOOL isOval_;
  CGFloat lineWidth_;
}
@property CGFloat lineWidth;
+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect
                                   xRadius:(CGFloat)xRadius
                                   yRadius:(CGFloat)yRadius;
+ (void)fillRect:(NSRect)rect;
- (void)stroke;
- (void)fill;
- (void)addClip;
@end

@interface NSImageRep : NSObject <NSCopying> {
  NSSize size_;
}
@property NSSize size;
- (BOOL)draw;
@end

@interface NSCustomImageRep : NSImageRep {
  SEL drawSelector_;
  id delegate_;
}
@property(readonly) SEL drawSelector;
@property(readonly, assign) id delegate;
- (instancetype)initWithDrawSelector:(SEL)selector delegate:(id)delegate;
@end

@interface NSImage : NSObject {
  NSSize size_;
  BOOL isTemplate_;
 @public
  NSURL* url_;
  NSMutableArray* representations_;
}
@property NSSize size;
- (instancetype)initWithSize:(NSSize)size;
- (instancetype)initWithContentsOfURL:(NSURL*)url;
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)isTemplate;
- (void)addRepresentation:(NSImageRep*)imageRep;
@end

typedef NSString* NSFontTextStyle;
typedef NSString* NSFontTextStyleOptionKey;
extern NSFontTextStyle const NSFontTextStyleTitle2;
extern NSFontTextStyle const NSFontTextStyleBody;
extern NSFontTextStyle const NSFontTextStyleCaption1;
extern NSFontTextStyle const NSFontTextStyleCaption2;

@interface NSFont : NSObject <NSCopying> {
  NSFontTextStyle style_;
  BOOL isBold_;
}
+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style options:(NSDictionary*)options;
@end

typedef NS_OPTIONS(NSUInteger, NSFontTraitMask) {
  NSBoldFontMask = 0x00000002,
};

@interface NSFontManager : NSObject
+ (NSFontManager*)sharedFontManager;
- (NSFont*)convertFont:(NSFont*)fontObj toHaveTrait:(NSFontTraitMask)trait;
@end
