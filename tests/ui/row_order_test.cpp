#include "ui/row_order.h"

#include <gtest/gtest.h>

namespace {

TEST(SortAfter, GoesOnceThroughAllOrders) {
  EXPECT_EQ(sortAfter(SortBy::memory, true), SortBy::gpu);
  EXPECT_EQ(sortAfter(SortBy::gpu, true), SortBy::name);
  EXPECT_EQ(sortAfter(SortBy::name, true), SortBy::start);
  EXPECT_EQ(sortAfter(SortBy::start, true), SortBy::memory);
}

TEST(SortAfter, LeavesOutTheCardsWhereThereAreNone) {
  EXPECT_EQ(sortAfter(SortBy::memory, false), SortBy::name);
  EXPECT_EQ(sortAfter(SortBy::gpu, false), SortBy::name) << "the last card is gone";
}

}  // namespace
