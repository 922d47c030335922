#include "ui/row_direction.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct OrderRow {
  const char* name;
  const char* row;
  const char* expected;
};

class LeftToRight : public testing::TestWithParam<OrderRow> {};

TEST_P(LeftToRight, KeepTheirPlaces) {
  EXPECT_EQ(leftToRight(GetParam().row), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LeftToRight,
    testing::Values(OrderRow{"Latin", "firefox  ·   312 MB", "firefox  ·   312 MB"},
                    OrderRow{"Accents", "café  ·   312 MB", "café  ·   312 MB"},
                    OrderRow{"Chinese", "模型  ·   312 MB", "模型  ·   312 MB"},
                    OrderRow{"Hebrew", "שלום  ·   312 MB", "\u200Eשלום\u200E  ·   312 MB"},
                    OrderRow{"Arabic", "مرحبا  ·   312 MB", "\u200Eمرحبا\u200E  ·   312 MB"},
                    OrderRow{"AfterAStar", "★ שלום  ·   4.9 GB", "\u200E★ שלום\u200E  ·   4.9 GB"},
                    OrderRow{"ThreeParts", "שלום  ·  on  ·  x",
                             "\u200Eשלום\u200E  ·  on\u200E  ·  x"},
                    OrderRow{"OnePart", "שלום", "\u200Eשלום"},
                    OrderRow{"BytesThatAreNoText", "\xff שלום", "\u200E\xff שלום"},
                    OrderRow{"Nothing", "", ""}),
    rowName<OrderRow>);

}  // namespace
