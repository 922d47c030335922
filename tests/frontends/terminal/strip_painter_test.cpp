#include "frontends/terminal/strip_painter.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "ui/strip_text.h"

namespace {

struct StripPainterRow {
  const char* name;
  std::vector<double> fractions;
  int columns;
  /// A letter a segment, "." the empty track, "#" the pressure over the track.
  const char* picture;
};

class StripCells : public testing::TestWithParam<StripPainterRow> {};

MemoryPressureView stripOf(const std::vector<double>& fractions) {
  MemoryPressureView strip;
  for (const double fraction : fractions) strip.segments.push_back({.fraction = fraction});
  return strip;
}

TEST_P(StripCells, AreInProportion) {
  std::string picture;
  for (const auto& cell :
       terminal::stripCells(stripOf(GetParam().fractions).segments, GetParam().columns)) {
    const char segment = cell.segment ? segmentLetter(*cell.segment) : '.';
    picture += cell.showsPressure && segment == '.' ? '#' : segment;
  }
  EXPECT_EQ(picture, GetParam().picture);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StripCells,
    testing::Values(
        StripPainterRow{"Empty", {}, 20, "..................##"},
        StripPainterRow{"Quarters", {0.25, 0.25}, 20, "AAAAABBBBB........##"},
        StripPainterRow{"RoundedDown", {0.19, 0.29}, 10, "ABB......#"},
        StripPainterRow{"AtLeastOneCell", {0.003, 0.003}, 20, "AB................##"},
        StripPainterRow{"OverflowShrinks", {0.75, 0.5}, 10, "AAAAAABBBB"},
        StripPainterRow{
            "SegmentsUnderThePressureAreStillThere", {0.95}, 20, "AAAAAAAAAAAAAAAAAAA#"},
        StripPainterRow{"NoMoreThanThereIsRoomFor", {1.0, 0.003, 0.003}, 10, "AAAAAAAAAB"},
        StripPainterRow{"PressureIsAtLeastOneCell", {}, 3, "..#"},
        StripPainterRow{"NoRoom", {0.5}, 0, ""}),
    rowName<StripPainterRow>);

TEST(StripCells, KnowWhereASegmentBeginsAndEnds) {
  const auto cells = terminal::stripCells(stripOf({0.2, 0.1}).segments, 10);
  EXPECT_TRUE(cells[0].startsSegment && !cells[0].endsSegment);
  EXPECT_TRUE(!cells[1].startsSegment && cells[1].endsSegment);
  EXPECT_TRUE(cells[2].startsSegment && cells[2].endsSegment);
  EXPECT_FALSE(cells[3].startsSegment || cells[3].endsSegment);
}

}  // namespace
