#include "frontends/terminal/strip_painter.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "ui/strip_text.h"

namespace {

struct Row {
  const char* name;
  std::vector<double> fractions;
  int columns;
  const char* picture;  ///< a letter a bar, "." the empty track, "#" the marker over the track
};

class StripCells : public testing::TestWithParam<Row> {};

MemoryPressureView stripOf(const std::vector<double>& fractions) {
  MemoryPressureView strip;
  for (const double fraction : fractions) strip.segments.push_back({.fraction = fraction});
  return strip;
}

TEST_P(StripCells, AreInProportion) {
  std::string picture;
  for (const auto& cell : terminal::stripCells(stripOf(GetParam().fractions), GetParam().columns)) {
    const char bar = cell.segment ? barLetter(*cell.segment) : '.';
    picture += cell.marker && bar == '.' ? '#' : bar;
  }
  EXPECT_EQ(picture, GetParam().picture);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StripCells,
    testing::Values(Row{"Empty", {}, 20, "..................##"},
                    Row{"Quarters", {0.25, 0.25}, 20, "AAAAABBBBB........##"},
                    Row{"RoundedDown", {0.19, 0.29}, 10, "ABB......#"},
                    Row{"AtLeastOneCell", {0.003, 0.003}, 20, "AB................##"},
                    Row{"OverflowShrinks", {0.75, 0.5}, 10, "AAAAAABBBB"},
                    Row{"BarsUnderTheMarkerAreStillThere", {0.95}, 20, "AAAAAAAAAAAAAAAAAAA#"},
                    Row{"NoMoreThanThereIsRoomFor", {1.0, 0.003, 0.003}, 10, "AAAAAAAAAB"},
                    Row{"MarkerIsAtLeastOneCell", {}, 3, "..#"}, Row{"NoRoom", {0.5}, 0, ""}),
    rowName<Row>);

TEST(StripCells, KnowWhereABarBeginsAndEnds) {
  const auto cells = terminal::stripCells(stripOf({0.2, 0.1}), 10);
  EXPECT_TRUE(cells[0].startsBar && !cells[0].endsBar);
  EXPECT_TRUE(!cells[1].startsBar && cells[1].endsBar);
  EXPECT_TRUE(cells[2].startsBar && cells[2].endsBar);
  EXPECT_FALSE(cells[3].startsBar || cells[3].endsBar);
}

}  // namespace
