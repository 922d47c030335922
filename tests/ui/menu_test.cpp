#include "ui/menu.h"

#include <gtest/gtest.h>

#include <memory>

#include "ui/menu_sections.h"

namespace {

TEST(StripOfAMenu, IsThatOfItsItem) {
  const auto strip = std::make_shared<MemoryPressureView>();
  const MenuItem row{.title = "x"};
  const MenuItem stripItem{.kind = MenuItem::Kind::strip, .strip = strip};
  EXPECT_EQ(stripOf(Menu{{stripItem, row}}), strip);
  EXPECT_EQ(stripOf(Menu{{row, stripItem}}), strip);
}

TEST(Heading, IsTheGreyLineAboveASection) {
  EXPECT_TRUE(isHeading({.title = MenuConstruction::kTopHeader, .enabled = false}));
  EXPECT_TRUE(isHeading({.title = MenuConstruction::kLaunchAgentsHeader, .enabled = false}));
  EXPECT_FALSE(isHeading({.title = "— a process —"})) << "a row";
  EXPECT_FALSE(isHeading({.title = "Model servers  none", .enabled = false}));
  EXPECT_FALSE(isHeading({.kind = MenuItem::Kind::separator}));
}

TEST(SelectableItem, IsNoGreyLineSeparatorOrStrip) {
  EXPECT_TRUE(isSelectable({.title = "x"}));
  EXPECT_FALSE(isSelectable({.title = "x", .enabled = false}));
  EXPECT_FALSE(isSelectable({.kind = MenuItem::Kind::separator}));
  EXPECT_FALSE(isSelectable({.kind = MenuItem::Kind::strip}));
}

TEST(StripOfAMenu, IsNoneWithoutSuchAnItem) {
  EXPECT_EQ(stripOf(Menu{}), nullptr);
  EXPECT_EQ(stripOf(Menu{{MenuItem{.title = "x"}}}), nullptr);
}

}  // namespace
