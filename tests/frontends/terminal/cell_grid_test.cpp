#include "frontends/terminal/cell_grid.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "frontends/terminal/grid_picture.h"

using terminal::CellGrid;

namespace {

TEST(CellGrid, ShowsWhatWasWritten) {
  CellGrid grid({8, 2});
  EXPECT_EQ(grid.write(1, 1, "模é", {}, 8), 3);
  EXPECT_EQ(rowOf(grid, 0), "");
  EXPECT_EQ(rowOf(grid, 1), " 模é");
  EXPECT_EQ(grid.at(1, 1).columns, 2);
  EXPECT_EQ(grid.at(2, 1).columns, 0);
}

TEST(CellGrid, CutsAtItsRightEdge) {
  CellGrid grid({5, 1});
  EXPECT_EQ(grid.write(2, 0, "abcdef", {}, 99), 3);
  EXPECT_EQ(rowOf(grid, 0), "  ab…");
}

TEST(CellGrid, IgnoresWhatLiesOutside) {
  CellGrid grid({3, 1});
  grid.write(0, 5, "abc", {}, 3);
  grid.write(9, 0, "abc", {}, 3);
  grid.fill({-1, -1, 9, 9}, "x", {});
  EXPECT_EQ(rowOf(grid, 0), "xxx");
}

TEST(CellGrid, HoldsTheLongestCellThatThereIs) {
  // Marks of four bytes with nothing to stand on.
  const std::string marks = "\U0001E8D0\U0001E8D1\U0001E8D2\U0001E8D3\U0001E8D4";
  CellGrid grid({3, 1});
  grid.write(0, 0, marks, {}, 3);
  EXPECT_EQ(rowOf(grid, 0), " " + marks);
}

struct OverwriteRow {
  const char* name;
  int x;
  const char* text;
  const char* row;
};

class CellGridOverwrites : public testing::TestWithParam<OverwriteRow> {};

TEST_P(CellGridOverwrites, LeaveNoHalfOfAWideCharacter) {
  CellGrid grid({6, 1});
  grid.write(1, 0, "模型", {}, 6);
  grid.write(GetParam().x, 0, GetParam().text, {}, 6);
  EXPECT_EQ(rowOf(grid, 0), GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(Table, CellGridOverwrites,
                         testing::Values(OverwriteRow{"LeftHalf", 1, "x", " x 型"},
                                         OverwriteRow{"RightHalf", 2, "x", "  x型"},
                                         OverwriteRow{"BothByAWideOne", 2, "服", "  服"},
                                         OverwriteRow{"Before", 0, "x", "x模型"}),
                         rowName<OverwriteRow>);

TEST(CellGrid, KeepsTheStyleOfEachCell) {
  CellGrid grid({4, 1});
  const terminal::Style red{.foreground = terminal::Rgb{255, 0, 0}};
  grid.write(0, 0, "模x", red, 4);
  EXPECT_EQ(grid.at(0, 0).style, red);
  EXPECT_EQ(grid.at(1, 0).style, red);
  EXPECT_EQ(grid.at(3, 0).style, terminal::Style{});
}

}  // namespace
