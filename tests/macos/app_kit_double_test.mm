// What the double of AppKit refuses, as AppKit does.
#import <AppKit/AppKit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "macos/appkit/user.h"
#include "macos/mac_test.h"

/// Writes down what it is told, and changes the menu at once when it has closed.
@interface HastyDelegate : NSObject <NSMenuDelegate> {
 @public
  std::vector<std::string> events_;
  bool isHasty_;
}
- (void)act;
@end

@implementation HastyDelegate

- (void)menuNeedsUpdate:(NSMenu*)menu {
  events_.push_back("needs update");
}

- (void)menuWillOpen:(NSMenu*)menu {
  events_.push_back("will open");
}

- (void)menuDidClose:(NSMenu*)menu {
  events_.push_back(appkit::record().menusOpen == 0 ? "did close" : "did close while tracked");
  if (isHasty_) [menu removeAllItems];
}

- (void)act {
  events_.push_back("action");
}

@end

/// A view whose y grows downwards.
@interface FlippedView : NSView
@end

@implementation FlippedView

- (BOOL)isFlipped {
  return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
  [NSBezierPath fillRect:NSMakeRect(0, 0, 5, 10)];
}

@end

namespace {

using testing::ElementsAre;
using testing::StartsWith;

class AppKitDouble : public MacTest {
 protected:
  template <typename Work>
  static bool raises(Work work) {
    @try {
      work();
    } @catch (NSException* exception) {
      return true;
    }
    return false;
  }

  NSMenu* menu = [[[NSMenu alloc] init] autorelease];
  NSMenu* other = [[[NSMenu alloc] init] autorelease];
};

TEST_F(AppKitDouble, ItemStandsInOnePlace) {
  NSMenuItem* item = [NSMenuItem separatorItem];
  [menu addItem:item];
  EXPECT_TRUE(raises([&] { [menu addItem:item]; }));
  EXPECT_TRUE(raises([&] { [other addItem:item]; }));
  [menu removeAllItems];
  EXPECT_FALSE(raises([&] { [other addItem:item]; }));
}

TEST_F(AppKitDouble, SubmenuBelongsToOneItem) {
  NSMenuItem* first = [menu addItemWithTitle:@"a" action:NULL keyEquivalent:@""];
  NSMenuItem* second = [menu addItemWithTitle:@"b" action:NULL keyEquivalent:@""];
  [first setSubmenu:other];
  EXPECT_TRUE(raises([&] { [second setSubmenu:other]; }));
  [first setSubmenu:nil];
  EXPECT_FALSE(raises([&] { [second setSubmenu:other]; }));
}

TEST_F(AppKitDouble, StatusItemThatNobodyKeepsIsGone) {
  @autoreleasepool {
    [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
    EXPECT_EQ(appkit::record().statusItems, 1);
  }
  EXPECT_EQ(appkit::record().statusItems, 0);
}

TEST_F(AppKitDouble, StatusItemThatIsGoneIsNotUsedUnnoticed) {
  NSStatusItem* item = nil;
  @autoreleasepool {
    item = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
    [item setMenu:menu];
  }
  EXPECT_EQ([item menu], nil);
  [item setMenu:menu];
  EXPECT_EQ([item button], nil);
  [item release];
  EXPECT_EQ(std::exchange(appkit::record().usesOfGoneStatusItem, 0), 4);
}

TEST_F(AppKitDouble, EventsComeInAppKitsOrder) {
  HastyDelegate* delegate = [[[HastyDelegate alloc] init] autorelease];
  [menu setDelegate:delegate];
  NSMenuItem* item = [other addItemWithTitle:@"a" action:@selector(act) keyEquivalent:@""];
  [item setTarget:delegate];
  [[menu addItemWithTitle:@"row" action:NULL keyEquivalent:@""] setSubmenu:other];
  appkit::open(menu);
  EXPECT_TRUE(raises([&] { appkit::open(menu); }));
  appkit::sendAction(item);
  EXPECT_TRUE(appkit::record().menuFades);
  appkit::turnRunLoop();
  EXPECT_FALSE(appkit::record().menuFades);
  EXPECT_THAT(delegate->events_, ElementsAre("needs update", "will open", "did close", "action"));
}

TEST_F(AppKitDouble, MenuThatReportsItsClosingCannotBeChanged) {
  HastyDelegate* delegate = [[[HastyDelegate alloc] init] autorelease];
  delegate->isHasty_ = true;
  [menu setDelegate:delegate];
  appkit::open(menu);
  EXPECT_TRUE(raises([&] { appkit::close(menu); }));
}

TEST_F(AppKitDouble, CancelledTrackingCloses) {
  HastyDelegate* delegate = [[[HastyDelegate alloc] init] autorelease];
  [menu setDelegate:delegate];
  [menu cancelTracking];
  EXPECT_TRUE(delegate->events_.empty());
  appkit::open(menu);
  [menu cancelTracking];
  EXPECT_EQ(delegate->events_.back(), "did close");
}

TEST_F(AppKitDouble, FlippedViewIsDrawnUpsideDown) {
  FlippedView* view = [[[FlippedView alloc] initWithFrame:NSMakeRect(9, 9, 20, 40)] autorelease];
  EXPECT_THAT(appkit::drawn(view), ElementsAre(StartsWith("fillRect (0 30 5 10)")));
}

TEST_F(AppKitDouble, TimersOfTheDefaultModeStandStillDuringAnAlert) {
  NSTimer* timer = [NSTimer timerWithTimeInterval:5
                                           target:menu
                                         selector:@selector(removeAllItems)
                                         userInfo:nil
                                          repeats:YES];
  [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
  [menu addItem:[NSMenuItem separatorItem]];
  NSAlert* alert = [[[NSAlert alloc] init] autorelease];
  [alert setMessageText:@"a"];
  [alert setInformativeText:@"b"];
  [alert runModal];
  EXPECT_EQ([menu numberOfItems], 1);
  appkit::fireTimers();
  EXPECT_EQ([menu numberOfItems], 0);
}

}  // namespace
