#include "macos/appkit/registry.h"
#include "macos/appkit/user.h"

@implementation NSMenu

@synthesize autoenablesItems = autoenablesItems_;
@synthesize delegate = delegate_;

- (instancetype)init {
  self = [super init];
  if (self != nil) {
    items_ = [[NSMutableArray alloc] init];
    autoenablesItems_ = YES;
  }
  return self;
}

- (void)dealloc {
  [items_ release];
  [super dealloc];
}

- (NSArray*)itemArray {
  return [[items_ copy] autorelease];
}

- (void)setItemArray:(NSArray*)items {
  [items_ setArray:items];
}

- (NSInteger)numberOfItems {
  return static_cast<NSInteger>([items_ count]);
}

- (NSMenuItem*)itemAtIndex:(NSInteger)index {
  return [items_ objectAtIndex:static_cast<NSUInteger>(index)];
}

- (void)addItem:(NSMenuItem*)newItem {
  [items_ addObject:newItem];
}

- (NSMenuItem*)addItemWithTitle:(NSString*)string
                         action:(SEL)selector
                  keyEquivalent:(NSString*)charCode {
  NSMenuItem* item = [[[NSMenuItem alloc] initWithTitle:string
                                                 action:selector
                                          keyEquivalent:charCode] autorelease];
  [self addItem:item];
  return item;
}

- (void)removeAllItems {
  [items_ removeAllObjects];
}

- (void)cancelTracking {
  ++appkit::record().trackingsCancelled;
}

@end

@implementation NSMenuItem

@synthesize separatorItem = separatorItem_;
@synthesize enabled = enabled_;
@synthesize title = title_;
@synthesize keyEquivalent = keyEquivalent_;
@synthesize toolTip = toolTip_;
@synthesize image = image_;
@synthesize submenu = submenu_;
@synthesize view = view_;
@synthesize target = target_;
@synthesize action = action_;
@synthesize tag = tag_;
@synthesize representedObject = representedObject_;
@synthesize accessibilityLabel = accessibilityLabel_;

+ (NSMenuItem*)separatorItem {
  NSMenuItem* item = [[[NSMenuItem alloc] initWithTitle:@"" action:NULL
                                          keyEquivalent:@""] autorelease];
  item->separatorItem_ = YES;
  return item;
}

- (instancetype)initWithTitle:(NSString*)string
                       action:(SEL)selector
                keyEquivalent:(NSString*)charCode {
  if (string == nil || charCode == nil) {
    [NSException raise:NSInvalidArgumentException format:@"a menu item without a title"];
  }
  self = [super init];
  if (self != nil) {
    ++appkit::record().menuItems;
    enabled_ = YES;
    title_ = [string copy];
    action_ = selector;
    keyEquivalent_ = [charCode copy];
  }
  return self;
}

- (void)dealloc {
  --appkit::record().menuItems;
  for (id object :
       {static_cast<id>(title_), static_cast<id>(keyEquivalent_), static_cast<id>(toolTip_),
        static_cast<id>(image_), static_cast<id>(submenu_), static_cast<id>(view_),
        static_cast<id>(accessibilityLabel_), representedObject_}) {
    [object release];
  }
  [super dealloc];
}

@end

@implementation NSStatusItem

@synthesize length = length_;
@synthesize menu = menu_;
@synthesize button = button_;

- (instancetype)init {
  self = [super init];
  if (self != nil && !appkit::record().buttonless) {
    button_ = [[NSStatusBarButton alloc] init];
    [button_ setImage:[[[NSImage alloc] initWithSize:NSMakeSize(18, 18)] autorelease]];
  }
  return self;
}

- (void)dealloc {
  [menu_ release];
  [button_ release];
  [super dealloc];
}

@end

namespace {

NSMutableArray* inStatusBar() {
  static NSMutableArray* items = [[NSMutableArray alloc] init];
  return items;
}

}  // namespace

@implementation NSStatusBar

+ (NSStatusBar*)systemStatusBar {
  static NSStatusBar* shared = [[NSStatusBar alloc] init];
  return shared;
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
  NSStatusItem* item = [[[NSStatusItem alloc] init] autorelease];
  [item setLength:length];
  [inStatusBar() addObject:item];
  ++appkit::record().statusItems;
  appkit::record().policyAtStatusItem = appkit::record().activationPolicy;
  return item;
}

- (void)removeStatusItem:(NSStatusItem*)item {
  if (![inStatusBar() containsObject:item]) return;
  --appkit::record().statusItems;
  [inStatusBar() removeObject:item];
}

@end

namespace appkit {

NSStatusItem* statusItem() {
  return [inStatusBar() count] == 1 ? [inStatusBar() objectAtIndex:0] : nil;
}

std::vector<std::string> titles(NSMenu* menu) {
  std::vector<std::string> result;
  for (NSMenuItem* item in [menu itemArray]) {
    result.push_back([item isSeparatorItem] ? "-" : [[item title] UTF8String]);
  }
  return result;
}

NSMenuItem* itemTitled(NSMenu* menu, const std::string& beginning) {
  for (NSMenuItem* item in [menu itemArray]) {
    if (std::string([[item title] UTF8String]).starts_with(beginning)) return item;
  }
  return nil;
}

void open(NSMenu* menu) {
  [[menu delegate] menuNeedsUpdate:menu];
  [[menu delegate] menuWillOpen:menu];
}

void close(NSMenu* menu) {
  [[menu delegate] menuDidClose:menu];
}

void sendAction(NSMenuItem* item) {
  if (![item isEnabled] || [item action] == NULL) return;
  record().menuFades = true;
  [[item target] performSelector:[item action] withObject:item];
}

void choose(NSMenuItem* item) {
  sendAction(item);
  turnRunLoop();
}

}  // namespace appkit
