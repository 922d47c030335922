// The edition's menu as AppKit holds it.
#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include "frontends/appkit/menu_items.h"
#include "macos/witness/witness.h"

namespace {

using MenuWitness = Witness;

TEST_F(MenuWitness, MenuHasAllItsItemsInTheirPlaces) {
  NSMenu* menu = [[[NSMenu alloc] initWithTitle:@""] autorelease];
  VordaMenuTarget* target = [[[VordaMenuTarget alloc] init] autorelease];
  const MenuItem separator{.kind = MenuItem::Kind::separator};
  const MenuItem row{.title = "row",
                     .dot = Color{1, 0, 0},
                     .submenu = {{.title = "a"}, separator, {.title = "b"}}};
  for (int i = 0; i < 2; ++i) fillMenu(menu, {row, separator, row, separator}, target);
  ASSERT_EQ([menu numberOfItems], 4);
  EXPECT_TRUE([[menu itemAtIndex:1] isSeparatorItem]);
  EXPECT_TRUE([[menu itemAtIndex:3] isSeparatorItem]);
  EXPECT_NE([menu itemAtIndex:1], [menu itemAtIndex:3]);
  for (const int place : {0, 2}) {
    NSMenuItem* item = [menu itemAtIndex:place];
    EXPECT_EQ([item menu], menu);
    EXPECT_NE([item image], nil);
    ASSERT_EQ([[item submenu] numberOfItems], 3);
    EXPECT_EQ([[item submenu] supermenu], menu);
    for (NSMenuItem* below in [[item submenu] itemArray]) EXPECT_EQ([below menu], [item submenu]);
  }
}

}  // namespace
