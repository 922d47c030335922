#include "frontends/appkit/menu_items.h"

#include <memory>
#include <vector>

#include "frontends/appkit/pictures.h"
#include "frontends/appkit/represented_object.h"
#include "frontends/appkit/strip_view.h"
#include "platform/macos/foundation_text.h"
#include "text/display_line.h"
#include "ui/row_direction.h"
#include "ui/spoken_menu.h"

/// A submenu that many items share: it is filled when it is about to open.
@interface VordaLateMenu : NSMenu <NSMenuDelegate> {
 @private
  const std::shared_ptr<const std::vector<MenuItem>>* values_;
  VordaMenuTarget* itemTarget_;
}
- (instancetype)initWithValues:(const std::shared_ptr<const std::vector<MenuItem>>&)values
                        target:(VordaMenuTarget*)target;
@end

@implementation VordaLateMenu

- (instancetype)initWithValues:(const std::shared_ptr<const std::vector<MenuItem>>&)values
                        target:(VordaMenuTarget*)target {
  self = [super init];
  if (self != nil) {
    values_ = new std::shared_ptr<const std::vector<MenuItem>>(values);
    itemTarget_ = target;
    [self setDelegate:self];
  }
  return self;
}

- (void)dealloc {
  delete values_;
  [super dealloc];
}

- (void)menuNeedsUpdate:(NSMenu*)menu {
  if ([menu numberOfItems] == 0) fillMenu(menu, **values_, itemTarget_);
}

@end

namespace {

void setAction(NSMenuItem* item, const MenuItem& value, VordaMenuTarget* target) {
  [item setAction:selectorOf(value.action)];
  [item setTarget:target];
  [item setRepresentedObject:objectOf(value.representedObject)];
  if (value.process && value.process->identity) {
    [item setTag:static_cast<NSInteger>(*value.process->identity)];
  }
}

NSMenuItem* nsMenuItem(const MenuItem& value, VordaMenuTarget* target) {
  if (value.kind == MenuItem::Kind::separator) return [NSMenuItem separatorItem];
  NSString* title = platform::nsString(leftToRight(text::displayLine(value.title)));
  NSMenuItem* item = [[[NSMenuItem alloc] initWithTitle:title action:NULL
                                          keyEquivalent:@""] autorelease];
  [item setEnabled:value.enabled];
  [item setAccessibilityLabel:platform::nsString(spokenText(text::displayLine(value.title)))];
  if (value.action != Action::none) setAction(item, value, target);
  if (!value.toolTip.empty()) [item setToolTip:platform::nsString(value.toolTip)];
  if (value.dot) [item setImage:dotImage(*value.dot)];
  if (value.strip) {
    VordaStripView* view = [[[VordaStripView alloc] initWithStrip:value.strip] autorelease];
    [item setView:view];
    [item setAccessibilityLabel:[view spokenText]];
  }
  if (value.opens) {
    [item setSubmenu:[[[VordaLateMenu alloc] initWithValues:value.opens
                                                     target:target] autorelease]];
  } else if (!value.submenu.empty()) {
    NSMenu* submenu = [[[NSMenu alloc] init] autorelease];
    fillMenu(submenu, value.submenu, target);
    [item setSubmenu:submenu];
  }
  return item;
}

}  // namespace

void fillMenu(NSMenu* menu, const std::vector<MenuItem>& items, VordaMenuTarget* target) {
  [menu setAutoenablesItems:NO];  // our items say themselves whether they are enabled
  [menu removeAllItems];
  for (const MenuItem& item : items) [menu addItem:nsMenuItem(item, target)];
}
