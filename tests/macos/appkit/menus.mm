#include <vector>

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
  if (isTracked_) --appkit::record().menusOpen;
  for (NSMenuItem* item in items_) item->menu_ = nil;
  [items_ release];
  [super dealloc];
}

- (void)mayChange {
  if (reportsClosing_) {
    [NSException raise:NSInternalInconsistencyException
                format:@"the menu is changed while it reports that it has closed"];
  }
}

- (NSArray*)itemArray {
  return [[items_ copy] autorelease];
}

- (void)setItemArray:(NSArray*)items {
  [self removeAllItems];
  for (NSMenuItem* item in items) [self addItem:item];
}

- (NSInteger)numberOfItems {
  return static_cast<NSInteger>([items_ count]);
}

- (NSMenuItem*)itemAtIndex:(NSInteger)index {
  return [items_ objectAtIndex:static_cast<NSUInteger>(index)];
}

- (void)addItem:(NSMenuItem*)newItem {
  [self mayChange];
  if (newItem->menu_ != nil) {
    [NSException raise:NSInternalInconsistencyException
                format:@"the item \"%@\" stands in a menu already", [newItem title]];
  }
  newItem->menu_ = self;
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
  [self mayChange];
  for (NSMenuItem* item in items_) item->menu_ = nil;
  [items_ removeAllObjects];
}

- (void)cancelTracking {
  ++appkit::record().trackingsCancelled;
  appkit::close(self);
}

@end

@implementation NSMenuItem

@synthesize separatorItem = separatorItem_;
@synthesize enabled = enabled_;
@synthesize title = title_;
@synthesize keyEquivalent = keyEquivalent_;
@synthesize toolTip = toolTip_;
@synthesize image = image_;
@synthesize menu = menu_;
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

- (NSMenu*)submenu {
  return submenu_;
}

- (void)setSubmenu:(NSMenu*)submenu {
  if (submenu != nil && submenu->owner_ != nil) {
    [NSException raise:NSInternalInconsistencyException
                format:@"the submenu of \"%@\" belongs to an item already", title_];
  }
  if (submenu_ != nil) submenu_->owner_ = nil;
  [submenu retain];
  [submenu_ release];
  submenu_ = submenu;
  if (submenu_ != nil) submenu_->owner_ = self;
}

- (void)dealloc {
  --appkit::record().menuItems;
  if (submenu_ != nil) submenu_->owner_ = nil;
  for (id object :
       {static_cast<id>(title_), static_cast<id>(keyEquivalent_), static_cast<id>(toolTip_),
        static_cast<id>(image_), static_cast<id>(submenu_), static_cast<id>(view_),
        static_cast<id>(accessibilityLabel_), representedObject_}) {
    [object release];
  }
  [super dealloc];
}

@end

namespace {

/// The status bar keeps none of them alive.
std::vector<NSStatusItem*> inStatusBar;
std::vector<NSStatusItem*> gone;

}  // namespace

@interface NSStatusItem (Life)
- (BOOL)isThere;
@end

@implementation NSStatusItem

@synthesize length = length_;

- (instancetype)init {
  self = [super init];
  if (self != nil && !appkit::record().buttonless) {
    button_ = [[NSStatusBarButton alloc] init];
    [button_ setImage:[[[NSImage alloc] initWithSize:NSMakeSize(18, 18)] autorelease]];
  }
  return self;
}

// Where AppKit would free it, it stays and is empty: so whoever uses it without having kept it is
// found out, and the other tests go on.
- (oneway void)release {
  if (![self isThere]) return;
  if ([self retainCount] > 1) {
    [super release];
    return;
  }
  [[NSStatusBar systemStatusBar] removeStatusItem:self];
  [self setMenu:nil];
  [button_ release];
  button_ = nil;
  isGone_ = YES;
  gone.push_back(self);
}

- (BOOL)isThere {
  if (isGone_) ++appkit::record().usesOfGoneStatusItem;
  return !isGone_;
}

- (NSMenu*)menu {
  return [self isThere] ? menu_ : nil;
}

- (void)setMenu:(NSMenu*)menu {
  if (![self isThere]) return;
  [menu retain];
  [menu_ release];
  menu_ = menu;
}

- (NSStatusBarButton*)button {
  return [self isThere] ? button_ : nil;
}

@end

@implementation NSStatusBar

+ (NSStatusBar*)systemStatusBar {
  static NSStatusBar* shared = [[NSStatusBar alloc] init];
  return shared;
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
  NSStatusItem* item = [[[NSStatusItem alloc] init] autorelease];
  [item setLength:length];
  inStatusBar.push_back(item);
  ++appkit::record().statusItems;
  appkit::record().policyAtStatusItem = appkit::record().activationPolicy;
  return item;
}

- (void)removeStatusItem:(NSStatusItem*)item {
  if (std::erase(inStatusBar, item) > 0) --appkit::record().statusItems;
}

@end

namespace appkit {

NSStatusItem* statusItem() {
  return inStatusBar.size() == 1 ? inStatusBar.front() : nil;
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

namespace {

/// The menu that opens in the menu bar.
NSMenu* rootOf(NSMenuItem* item) {
  NSMenu* menu = [item menu];
  while (menu != nil && menu->owner_ != nil) menu = [menu->owner_ menu];
  return menu;
}

}  // namespace

void open(NSMenu* menu) {
  if (menu == nil) [NSException raise:NSInvalidArgumentException format:@"there is no menu"];
  if (menu->isTracked_) {
    [NSException raise:NSInternalInconsistencyException format:@"the menu is open already"];
  }
  [[menu delegate] menuNeedsUpdate:menu];
  [[menu delegate] menuWillOpen:menu];
  menu->isTracked_ = YES;
  ++record().menusOpen;
}

void close(NSMenu* menu) {
  if (menu == nil || !menu->isTracked_) return;
  menu->isTracked_ = NO;
  --record().menusOpen;
  menu->reportsClosing_ = YES;
  [[menu delegate] menuDidClose:menu];
  menu->reportsClosing_ = NO;
  record().menuFades = true;
}

void sendAction(NSMenuItem* item) {
  if (![item isEnabled] || [item action] == NULL) return;
  [[item retain] autorelease];
  close(rootOf(item));
  record().menuFades = true;
  [[item target] performSelector:[item action] withObject:item];
}

void choose(NSMenuItem* item) {
  sendAction(item);
  turnRunLoop();
}

}  // namespace appkit
