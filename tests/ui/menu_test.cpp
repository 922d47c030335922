#include "ui/menu.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(StripOfAMenu, IsThatOfItsItem) {
  const auto strip = std::make_shared<MemoryPressureView>();
  const MenuItem row{.title = "x"};
  const MenuItem stripItem{.kind = MenuItem::Kind::strip, .strip = strip};
  EXPECT_EQ(stripOf(Menu{{stripItem, row}}), strip);
  EXPECT_EQ(stripOf(Menu{{row, stripItem}}), strip);
}

TEST(StripOfAMenu, IsNoneWithoutSuchAnItem) {
  EXPECT_EQ(stripOf(Menu{}), nullptr);
  EXPECT_EQ(stripOf(Menu{{MenuItem{.title = "x"}}}), nullptr);
}

}  // namespace
