#include "text/contains.h"

#include <gtest/gtest.h>

namespace {

TEST(Contains, TellsWhetherAPartOccurs) {
  EXPECT_TRUE(text::contains("abc", "bc"));
  EXPECT_TRUE(text::contains("abc", ""));
  EXPECT_FALSE(text::contains("abc", "ac"));
  EXPECT_FALSE(text::contains("", "a"));
}

TEST(ContainsAny, TellsWhetherAnyOfThePartsOccurs) {
  EXPECT_TRUE(text::containsAny("abc", {"x", "c"}));
  EXPECT_FALSE(text::containsAny("abc", {"x", "C"}));
  EXPECT_FALSE(text::containsAny("abc", {}));
}

}  // namespace
