#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/vorda_app_macos.h"
#include "frontends/appkit/app_kit_front_end.h"
#include "macos/appkit/user.h"
#include "macos/mac_test.h"
#include "tools/forked.h"

namespace {

using testing::ElementsAre;

class FrontEndTest : public MacTest {
 protected:
  static NSMenu* menu() { return [appkit::statusItem() menu]; }

  Menu value{{{.title = "a"}, {.title = "b"}}};
};

TEST_F(FrontEndTest, StatusItemIsAsWideAsItsTitle) {
  const AppKitFrontEnd frontEnd;
  EXPECT_EQ([appkit::statusItem() length], -1);
  EXPECT_EQ([[appkit::statusItem() button] image], nil);
}

TEST_F(FrontEndTest, TitleAndToolTipAreTheButtons) {
  AppKitFrontEnd frontEnd;
  frontEnd.setTitle("Vorda²");
  frontEnd.setToolTip("Vorda\nLargest: 5.00 GB — x\nHalvek");
  NSStatusBarButton* button = [appkit::statusItem() button];
  EXPECT_STREQ([[button title] UTF8String], "Vorda²");
  EXPECT_STREQ([[button toolTip] UTF8String], "Vorda\nLargest: 5.00 GB — x\nHalvek");
  EXPECT_STREQ([[button accessibilityLabel] UTF8String], "Vorda");
}

TEST_F(FrontEndTest, StatusItemWithoutAButtonHasItsMenuAllTheSame) {
  appkit::record().buttonless = true;
  AppKitFrontEnd frontEnd;
  frontEnd.setTitle("Vorda²");
  frontEnd.setToolTip("x");
  frontEnd.menuRebuilt(std::make_shared<const Menu>(value));
  EXPECT_THAT(appkit::titles(menu()), ElementsAre("a", "b"));
}

TEST_F(FrontEndTest, MenuStaysOneObject) {
  AppKitFrontEnd frontEnd;
  NSMenu* before = menu();
  frontEnd.menuRebuilt(std::make_shared<const Menu>(value));
  value.items.pop_back();
  frontEnd.menuRebuilt(std::make_shared<const Menu>(value));
  EXPECT_EQ(menu(), before);
  EXPECT_THAT(appkit::titles(menu()), ElementsAre("a"));
}

TEST_F(FrontEndTest, ChangedStripIsDrawnAgainAndNothingElseTouched) {
  AppKitFrontEnd frontEnd;
  const auto strip = std::make_shared<MemoryPressureView>();
  value.items.push_back({.kind = MenuItem::Kind::strip, .strip = strip});
  frontEnd.menuRebuilt(std::make_shared<const Menu>(value));
  NSArray* before = [menu() itemArray];
  ASSERT_FALSE([[[menu() itemAtIndex:2] view] needsDisplay]);
  EXPECT_STREQ([[[menu() itemAtIndex:2] accessibilityLabel] UTF8String], "Memory 0 percent used");
  strip->pressure = 0.5;
  frontEnd.stripChanged(*strip);
  EXPECT_STREQ([[[menu() itemAtIndex:2] accessibilityLabel] UTF8String], "Memory 50 percent used");
  EXPECT_TRUE([[[menu() itemAtIndex:2] view] needsDisplay]);
  EXPECT_TRUE([before isEqual:[menu() itemArray]]);
}

TEST_F(FrontEndTest, TrackingIsCancelled) {
  AppKitFrontEnd frontEnd;
  frontEnd.cancelTracking();
  EXPECT_EQ(appkit::record().trackingsCancelled, 1);
}

TEST_F(FrontEndTest, TerminatingAsksTheApplication) {
  AppKitFrontEnd frontEnd;
  frontEnd.terminate();
  EXPECT_EQ(appkit::record().terminations, 1);
}

TEST_F(FrontEndTest, WithoutAnApplicationTheProgramStopsAtOnce) {
  AppKitFrontEnd frontEnd;
  appkit::record().withoutApplication = true;
  const auto endOfProgram = [&] {
    frontEnd.terminate();
    return 0;
  };
  EXPECT_EQ(resultOfForked(endOfProgram), -1);
  EXPECT_EQ(resultOfForked([] { return VordaApp::main(); }), -1);
}

TEST_F(FrontEndTest, WithoutAControllerNobodyIsTold) {
  AppKitFrontEnd frontEnd;
  value.items[0].action = Action::quitApp;
  frontEnd.menuRebuilt(std::make_shared<const Menu>(value));
  appkit::open(menu());
  appkit::choose([menu() itemAtIndex:0]);
  appkit::close(menu());
  EXPECT_EQ(appkit::record().terminations, 0);
}

TEST_F(FrontEndTest, LeavesNothingBehind) {
  const int itemsBefore = appkit::record().menuItems;
  @autoreleasepool {
    AppKitFrontEnd frontEnd;
    frontEnd.menuRebuilt(std::make_shared<const Menu>(value));
    EXPECT_EQ(appkit::record().statusItems, 1);
  }
  EXPECT_EQ(appkit::record().statusItems, 0);
  EXPECT_EQ(appkit::record().menuItems, itemsBefore);
}

TEST_F(FrontEndTest, WhatOutlivesItTellsNobody) {
  NSStatusItem* item = nil;
  NSMenu* kept = nil;
  id<NSMenuDelegate> listener = nil;
  value.items[0].action = Action::quitApp;
  @autoreleasepool {
    AppKitFrontEnd frontEnd;
    frontEnd.menuRebuilt(std::make_shared<const Menu>(value));
    item = [appkit::statusItem() retain];
    kept = [menu() retain];
    listener = [[kept delegate] retain];
  }
  EXPECT_EQ([kept delegate], nil);
  [listener menuNeedsUpdate:kept];
  [listener menuDidClose:kept];
  appkit::choose([kept itemAtIndex:0]);
  EXPECT_EQ(appkit::record().terminations, 0);
  for (id object : {static_cast<id>(item), static_cast<id>(kept), static_cast<id>(listener)}) {
    EXPECT_EQ([object retainCount], 1);
    [object release];
  }
}

}  // namespace
