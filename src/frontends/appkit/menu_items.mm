#include "frontends/appkit/menu_items.h"

#include "frontends/appkit/pictures.h"
#include "frontends/appkit/represented_object.h"
#include "frontends/appkit/strip_view.h"
#include "platform/macos/foundation_text.h"
#include "text/display_line.h"
#include "ui/row_parts.h"

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
  NSString* title = platform::nsString(RowParts::leftToRight(text::displayLine(value.title)));
  NSMenuItem* item = [[[NSMenuItem alloc] initWithTitle:title action:NULL
                                          keyEquivalent:@""] autorelease];
  [item setEnabled:value.enabled];
  if (value.action != Action::none) setAction(item, value, target);
  if (!value.toolTip.empty()) [item setToolTip:platform::nsString(value.toolTip)];
  if (value.dot) [item setImage:dotImage(*value.dot)];
  if (value.strip) {
    [item setView:[[[VordaStripView alloc] initWithStrip:value.strip] autorelease]];
  }
  if (!value.submenu.empty()) {
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
