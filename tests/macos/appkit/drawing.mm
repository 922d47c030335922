#include "macos/appkit/registry.h"
#include "macos/appkit/user.h"
#include "text/format.h"

NSFontTextStyle const NSFontTextStyleTitle2 = @"UICTFontTextStyleTitle2";
NSFontTextStyle const NSFontTextStyleBody = @"UICTFontTextStyleBody";
NSFontTextStyle const NSFontTextStyleCaption1 = @"UICTFontTextStyleCaption1";
NSFontTextStyle const NSFontTextStyleCaption2 = @"UICTFontTextStyleCaption2";

namespace {

using text::format;

std::string fillColor;
std::string strokeColor;

void write(const std::string& command) {
  appkit::record().drawing.push_back(command);
}

NSView* flipped = nil;  ///< that is just drawn

std::string words(NSRect rect) {
  if (flipped != nil) {
    rect.origin.y = [flipped bounds].size.height - rect.origin.y - rect.size.height;
  }
  return format("(%g %g %g %g)", rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

}  // namespace

@implementation NSColor

+ (NSColor*)named:(NSString*)name {
  NSColor* color = [[[NSColor alloc] init] autorelease];
  color->name_ = [name copy];
  return color;
}

+ (NSColor*)colorWithCalibratedWhite:(CGFloat)white alpha:(CGFloat)alpha {
  NSColor* color = [NSColor colorWithCalibratedRed:white green:white blue:white alpha:alpha];
  color->isWhite_ = YES;
  return color;
}

+ (NSColor*)colorWithCalibratedRed:(CGFloat)red
                             green:(CGFloat)green
                              blue:(CGFloat)blue
                             alpha:(CGFloat)alpha {
  NSColor* color = [[[NSColor alloc] init] autorelease];
  color->components_[0] = red;
  color->components_[1] = green;
  color->components_[2] = blue;
  color->components_[3] = alpha;
  return color;
}

+ (NSColor*)labelColor {
  return [NSColor named:@"labelColor"];
}

+ (NSColor*)secondaryLabelColor {
  return [NSColor named:@"secondaryLabelColor"];
}

+ (NSColor*)tertiaryLabelColor {
  return [NSColor named:@"tertiaryLabelColor"];
}

- (void)dealloc {
  [name_ release];
  [super dealloc];
}

- (id)copyWithZone:(NSZone*)zone {
  return [self retain];
}

- (NSString*)description {
  if (name_ != nil) return name_;
  return [NSString stringWithFormat:@"%@ rgba(%g %g %g %g)", isWhite_ ? @"white" : @"rgb",
                                    components_[0], components_[1], components_[2], components_[3]];
}

- (std::string)words {
  if (name_ != nil) return [name_ UTF8String];
  return format("rgba(%g %g %g %g)", components_[0], components_[1], components_[2],
                components_[3]);
}

- (void)setFill {
  fillColor = [self words];
}

- (void)setStroke {
  strokeColor = [self words];
}

@end

@implementation NSGraphicsContext

+ (void)saveGraphicsState {
  ++appkit::record().savedGraphicsStates;
  write("saveState");
}

+ (void)restoreGraphicsState {
  --appkit::record().savedGraphicsStates;
  write("restoreState");
}

@end

@implementation NSBezierPath

@synthesize lineWidth = lineWidth_;

+ (NSBezierPath*)pathIn:(NSRect)rect {
  NSBezierPath* path = [[[NSBezierPath alloc] init] autorelease];
  path->rect_ = rect;
  path->lineWidth_ = 1;
  return path;
}

+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect {
  NSBezierPath* path = [NSBezierPath pathIn:rect];
  path->isOval_ = YES;
  return path;
}

+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect
                                   xRadius:(CGFloat)xRadius
                                   yRadius:(CGFloat)yRadius {
  NSBezierPath* path = [NSBezierPath pathIn:rect];
  path->radius_ = xRadius == yRadius ? xRadius : -1;
  return path;
}

+ (void)fillRect:(NSRect)rect {
  write("fillRect " + words(rect) + " " + fillColor);
}

- (void)stroke {
  write("strokeRoundedRect " + words(rect_) + format(" r%g ", radius_) + strokeColor +
        format(" w%g", lineWidth_));
}

- (void)fill {
  write(isOval_ ? "fillOval " + words(rect_) + " " + fillColor
                : "fillRoundedRect " + words(rect_) + format(" r%g ", radius_) + fillColor);
}

- (void)addClip {
  write("clipToRoundedRect " + words(rect_) + format(" r%g", radius_));
}

@end

@implementation NSImageRep

@synthesize size = size_;

- (id)copyWithZone:(NSZone*)zone {
  NSImageRep* copy = [[[self class] allocWithZone:zone] init];
  copy->size_ = size_;
  return copy;
}

- (BOOL)draw {
  return NO;
}

@end

@implementation NSCustomImageRep

@synthesize drawSelector = drawSelector_;
@synthesize delegate = delegate_;

- (instancetype)initWithDrawSelector:(SEL)selector delegate:(id)delegate {
  self = [super init];
  if (self != nil) {
    drawSelector_ = selector;
    delegate_ = delegate;  // not retained
  }
  return self;
}

- (id)copyWithZone:(NSZone*)zone {
  NSCustomImageRep* copy = [super copyWithZone:zone];
  copy->drawSelector_ = drawSelector_;
  copy->delegate_ = delegate_;
  return copy;
}

- (BOOL)draw {
  [delegate_ performSelector:drawSelector_ withObject:self];
  return YES;
}

@end

@implementation NSImage

@synthesize size = size_;

- (instancetype)initWithSize:(NSSize)size {
  self = [super init];
  if (self != nil) {
    size_ = size;
    representations_ = [[NSMutableArray alloc] init];
  }
  return self;
}

- (BOOL)isTemplate {
  return isTemplate_;
}

- (void)setTemplate:(BOOL)isTemplate {
  isTemplate_ = isTemplate;
}

- (instancetype)initWithContentsOfURL:(NSURL*)url {
  if (![[NSData dataWithContentsOfURL:url] length]) {
    [self release];
    return nil;
  }
  self = [self initWithSize:NSMakeSize(256, 256)];
  if (self != nil) url_ = [url copy];
  return self;
}

- (void)dealloc {
  [url_ release];
  [representations_ release];
  [super dealloc];
}

- (void)addRepresentation:(NSImageRep*)imageRep {
  [representations_ addObject:imageRep];
}

@end

namespace appkit {

std::vector<std::string> drawn(NSView* view) {
  std::vector<std::string> commands;
  commands.swap(record().drawing);
  flipped = [view isFlipped] ? view : nil;
  [view drawRect:[view bounds]];
  flipped = nil;
  commands.swap(record().drawing);
  return commands;
}

std::vector<std::string> drawingIn(NSImage* image) {
  std::vector<std::string> commands;
  commands.swap(record().drawing);
  for (NSImageRep* representation in image->representations_) {
    // As AppKit may: it shows copies, and draws anew for another screen.
    [[[representation copy] autorelease] draw];
  }
  commands.swap(record().drawing);
  return commands;
}

NSString* fileOf(NSImage* image) {
  return [image->url_ lastPathComponent];
}

}  // namespace appkit

@implementation NSFont

+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style options:(NSDictionary*)options {
  NSFont* font = [[[NSFont alloc] init] autorelease];
  font->style_ = style;
  return font;
}

- (id)copyWithZone:(NSZone*)zone {
  return [self retain];
}

- (NSFont*)bold {
  NSFont* font = [NSFont preferredFontForTextStyle:style_ options:nil];
  font->isBold_ = YES;
  return font;
}

- (NSString*)description {
  return isBold_ ? [style_ stringByAppendingString:@" bold"] : style_;
}

@end

@implementation NSFontManager

+ (NSFontManager*)sharedFontManager {
  static NSFontManager* shared = [[NSFontManager alloc] init];
  return shared;
}

- (NSFont*)convertFont:(NSFont*)fontObj toHaveTrait:(NSFontTraitMask)trait {
  return trait == NSBoldFontMask ? [fontObj bold] : fontObj;
}

@end
