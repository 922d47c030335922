#include "frontends/appkit/menu_items.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/recording_canvas.h"
#include "frontends/appkit/represented_object.h"
#include "frontends/appkit/strip_view.h"
#include "macos/appkit/user.h"
#include "macos/mac_test.h"

namespace {

using testing::ElementsAre;

VordaProcess process() {
  return {.pid = 5, .displayName = "Ollama Server", .memMB = 512, .matchedAgents = {"a", "b"}};
}

VordaLaunchAgent aLaunchAgent() {
  return {.label = "com.a", .plistPath = "/a.plist", .loaded = true, .pid = 7};
}

class MenuItems : public MacTest {
 protected:
  MenuItems()
      : menu([[NSMenu alloc] init]),
        target([[VordaMenuTarget alloc] init]),
        pool([[NSAutoreleasePool alloc] init]) {}
  ~MenuItems() override {
    [pool release];
    [menu release];
    [target release];
  }

  NSMenuItem* only(const MenuItem& item) {
    fillMenu(menu, {item}, target);
    return [menu itemAtIndex:0];
  }

  NSMenu* menu;
  VordaMenuTarget* target;
  NSAutoreleasePool* pool;
};

TEST_F(MenuItems, ReplaceWhatWasThere) {
  fillMenu(menu, {{.title = "a"}, {.kind = MenuItem::Kind::separator}, {.title = "b"}}, target);
  fillMenu(menu, {{.title = "c"}}, target);
  EXPECT_THAT(appkit::titles(menu), ElementsAre("c"));
}

TEST_F(MenuItems, StandInTheirOrder) {
  fillMenu(menu, {{.title = "a"}, {.kind = MenuItem::Kind::separator}, {.title = "b"}}, target);
  EXPECT_THAT(appkit::titles(menu), ElementsAre("a", "-", "b"));
}

TEST_F(MenuItems, FillASharedMenuWhenItOpens) {
  MenuItem item{.title = "Its 2 processes…", .action = Action::openRow};
  item.opens = std::make_shared<const std::vector<MenuItem>>(
      std::vector<MenuItem>{{.title = "a"}, {.title = "b"}});
  NSMenu* submenu = [only(item) submenu];
  EXPECT_EQ([submenu numberOfItems], 0);
  [[submenu delegate] menuNeedsUpdate:submenu];
  EXPECT_THAT(appkit::titles(submenu), ElementsAre("a", "b"));
}

TEST_F(MenuItems, SayThemselvesWhetherTheyAreEnabled) {
  EXPECT_FALSE([only({.title = "a", .enabled = false}) isEnabled]);
  EXPECT_TRUE([only({.title = "a"}) isEnabled]);
  EXPECT_FALSE([menu autoenablesItems]);
}

TEST_F(MenuItems, HaveNoKey) {
  EXPECT_STREQ([[only({.title = "a", .action = Action::about}) keyEquivalent] UTF8String], "");
}

TEST_F(MenuItems, TitleIsOneHarmlessLine) {
  EXPECT_STREQ([[only({.title = "★ a\nb\xff  ·  12 MB 🔒"}) title] UTF8String],
               "★ a\uFFFDb\uFFFD  ·  12 MB 🔒");
}

TEST_F(MenuItems, TitleKeepsItsFigureBehindANameFromRightToLeft) {
  EXPECT_STREQ([[only({.title = "שלום  ·  12 MB"}) title] UTF8String],
               "\u200Eשלום\u200E  ·  12 MB");
}

TEST_F(MenuItems, ToolTipKeepsItsLines) {
  EXPECT_STREQ([[only({.title = "a", .toolTip = "x\ny"}) toolTip] UTF8String], "x\ny");
  EXPECT_EQ([only({.title = "a"}) toolTip], nil);
}

TEST_F(MenuItems, DotIsAnOvalOfItsColor) {
  const Color color{0.35, 0.75, 1.0};
  NSImage* image = [only({.title = "a", .dot = color}) image];
  EXPECT_TRUE(NSEqualSizes([image size], NSMakeSize(12, 12)));
  RecordingCanvas canvas;
  canvas.fillOval({2, 2, 8, 8}, color);
  EXPECT_EQ(appkit::drawingIn(image), canvas.commands);
  EXPECT_FALSE([image isTemplate]) << "it keeps its color";
  EXPECT_EQ([only({.title = "a"}) image], nil);
}

TEST_F(MenuItems, StripIsAnUntitledItemWithAView) {
  const auto strip = std::make_shared<MemoryPressureView>();
  NSMenuItem* item = only({.kind = MenuItem::Kind::strip, .enabled = false, .strip = strip});
  EXPECT_TRUE([[item view] isKindOfClass:[VordaStripView class]]);
  EXPECT_STREQ([[item title] UTF8String], "");
  EXPECT_FALSE([item isEnabled]);
}

TEST_F(MenuItems, SubmenuIsFilledLikeAMenu) {
  const MenuItem quit{
      .title = "Quit", .action = Action::quitProcess, .representedObject = std::int32_t{5}};
  NSMenuItem* item = only({.title = "row", .submenu = {{.title = "x", .enabled = false}, quit}});
  EXPECT_EQ([item action], static_cast<SEL>(NULL));
  EXPECT_THAT(appkit::titles([item submenu]), ElementsAre("x", "Quit"));
  EXPECT_FALSE([[item submenu] autoenablesItems]);
  EXPECT_EQ([[[item submenu] itemAtIndex:1] target], target);
  EXPECT_EQ([[item submenu] delegate], nil);
}

TEST_F(MenuItems, LabelHasNeitherActionNorTarget) {
  NSMenuItem* item = only({.title = "a"});
  EXPECT_EQ([item action], static_cast<SEL>(NULL));
  EXPECT_EQ([item target], nil);
  EXPECT_EQ([item representedObject], nil);
}

TEST_F(MenuItems, RepresentedPidIsANumber) {
  id object = [only({.title = "Quit",
                     .action = Action::quitProcess,
                     .representedObject = std::int32_t{2147483647}}) representedObject];
  ASSERT_TRUE([object isKindOfClass:[NSNumber class]]);
  EXPECT_EQ([object intValue], 2147483647);
}

TEST_F(MenuItems, RepresentedLabelIsAString) {
  id object = [only({.title = "Unload x",
                     .action = Action::unloadByLabel,
                     .representedObject = std::string("com.é")}) representedObject];
  ASSERT_TRUE([object isKindOfClass:[NSString class]]);
  EXPECT_STREQ([object UTF8String], "com.é");
}

TEST_F(MenuItems, RepresentedRecordsComeBackWhole) {
  EXPECT_EQ(valueOf(objectOf(process())), RepresentedObject(process()));
  EXPECT_EQ(valueOf(objectOf(aLaunchAgent())), RepresentedObject(aLaunchAgent()));
  EXPECT_EQ(valueOf(objectOf(std::string("x"))), RepresentedObject(std::string("x")));
  EXPECT_EQ(valueOf(objectOf(std::int32_t{5})), RepresentedObject(std::int32_t{5}));
}

TEST_F(MenuItems, ForeignObjectsRepresentNothing) {
  EXPECT_EQ(objectOf({}), nil);
  EXPECT_EQ(valueOf(nil), RepresentedObject());
  EXPECT_EQ(valueOf([NSArray array]), RepresentedObject());
}

TEST_F(MenuItems, NumberThatIsNoPidIsNotCut) {
  EXPECT_EQ(valueOf([NSNumber numberWithLongLong:(1LL << 32) + 5]), RepresentedObject());
}

TEST_F(MenuItems, ReplacedItemsAreFreed) {
  const int itemsBefore = appkit::record().menuItems;
  const int viewsBefore = appkit::record().views;
  const auto strip = std::make_shared<MemoryPressureView>();
  @autoreleasepool {
    fillMenu(menu,
             {{.kind = MenuItem::Kind::strip, .strip = strip},
              {.title = "row",
               .submenu = {{.title = "Force Quit",
                            .action = Action::forceProcess,
                            .representedObject = process()}}}},
             target);
  }
  EXPECT_EQ(appkit::record().menuItems, itemsBefore + 3);
  EXPECT_EQ(appkit::record().views, viewsBefore + 1);
  @autoreleasepool {
    fillMenu(menu, {}, target);
  }
  EXPECT_EQ(appkit::record().menuItems, itemsBefore);
  EXPECT_EQ(appkit::record().views, viewsBefore);
  EXPECT_EQ(strip.use_count(), 1);
}

struct ActionRow {
  std::string name;
  Action action;
  RepresentedObject object;
  std::optional<ProcessReference> process;
};

class Actions : public MacTestWith<ActionRow>, public MenuDelegate {
 protected:
  void menuNeedsUpdate() override {}
  void menuWillOpen() override {}
  void menuDidClose() override {}
  void perform(std::shared_ptr<const MenuItem> item) override { choices.push_back(*item); }

  std::vector<MenuItem> choices;
};

/// The message goes to the target under the action's own name, and arrives as what the menu's
/// value said.
TEST_P(Actions, ArriveAsTheyWereMeant) {
  @autoreleasepool {
    const ActionRow& row = GetParam();
    NSMenu* menu = [[[NSMenu alloc] init] autorelease];
    VordaMenuTarget* target = [[[VordaMenuTarget alloc] init] autorelease];
    [target reportTo:this ofMenu:menu];
    fillMenu(menu,
             {{.title = "x",
               .action = row.action,
               .representedObject = row.object,
               .process = row.process}},
             target);
    NSMenuItem* item = [menu itemAtIndex:0];
    EXPECT_EQ([item target], target);
    EXPECT_STREQ([NSStringFromSelector([item action]) UTF8String], row.name.c_str());
    appkit::choose(item);
    ASSERT_EQ(choices.size(), 1);
    EXPECT_EQ(choices[0].action, row.action);
    EXPECT_EQ(choices[0].representedObject, row.object);
    EXPECT_EQ(choices[0].process, row.process);
  }
}

/// A start identity as large as they come.
const ProcessReference kProcess{5, 0xFFFF'FFFF'FFFF'FFFEull};
const ProcessReference kUnidentified{5, std::nullopt};

std::string selectorName(const testing::TestParamInfo<ActionRow>& info) {
  std::string name = std::to_string(info.index) + info.param.name;
  std::erase(name, ':');
  return name;
}

INSTANTIATE_TEST_SUITE_P(
    Table, Actions,
    testing::Values(ActionRow{"refreshNow", Action::refreshNow, {}, {}},
                    ActionRow{"openAM", Action::openAM, {}, {}},
                    ActionRow{"about", Action::about, {}, {}},
                    ActionRow{"quitApp", Action::quitApp, {}, {}},
                    ActionRow{"openDockerHelp", Action::openDockerHelp, {}, {}},
                    ActionRow{"quitProcess:", Action::quitProcess, std::int32_t{5}, kProcess},
                    ActionRow{"quitProcess:", Action::quitProcess, std::int32_t{5}, kUnidentified},
                    ActionRow{"forceProcess:", Action::forceProcess, process(), kProcess},
                    ActionRow{"forceProcess:", Action::forceProcess, std::int32_t{5}, kProcess},
                    ActionRow{"showDetails:", Action::showDetails, process(), kUnidentified},
                    ActionRow{"quitFamily:", Action::quitFamily, std::int32_t{5}, kProcess},
                    ActionRow{"forceFamily:", Action::forceFamily, std::int32_t{5}, kProcess},
                    ActionRow{"unloadByLabel:", Action::unloadByLabel, std::string("com.a"), {}},
                    ActionRow{"unloadAgent:", Action::unloadLaunchAgent, aLaunchAgent(), {}},
                    ActionRow{"loadAgent:", Action::loadLaunchAgent, aLaunchAgent(), {}}),
    selectorName);

}  // namespace
