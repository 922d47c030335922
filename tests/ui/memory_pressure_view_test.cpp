#include "ui/memory_pressure_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/recording_canvas.h"
#include "fakes/row_name.h"

namespace {

using testing::ElementsAre;
using Commands = std::vector<std::string>;

// The track is then 260 wide and 24 high, from (10, 6) to (270, 30).
constexpr Rectangle kBounds{0, 0, 280, 36};
constexpr Color kBlue{0, 0, 1};
constexpr Color kRed{1, 0, 0};

Commands drawn(const MemoryPressureView& view, const Rectangle& bounds = kBounds) {
  RecordingCanvas canvas;
  view.draw(canvas, bounds);
  return canvas.commands;
}

/// What is drawn between the clip and the pressure.
Commands segmentsDrawn(const std::vector<Segment>& segments, const Rectangle& bounds = kBounds) {
  const Commands all = drawn({segments, 0}, bounds);
  return {all.begin() + 4, all.end() - 3};
}

TEST(MemoryPressureView, WithoutSegmentsIsTrackPressureAndGloss) {
  EXPECT_THAT(drawn({}),
              ElementsAre("fillRoundedRect (10 6 260 24) r12 rgba(0.12 0.12 0.12 0.85)",
                          "strokeRoundedRect (10 6 260 24) r12 rgba(1 1 1 0.12) w1", "saveState",
                          "clipToRoundedRect (10 6 260 24) r12",
                          "fillRect (249.2 6 20.8 24) rgba(0.2 0.9 0.45 0.35)", "restoreState",
                          "fillRoundedRect (11 18 258 11) r4 rgba(1 1 1 0.06)"));
}

TEST(MemoryPressureView, DrawsWhereItIsTold) {
  EXPECT_THAT(drawn({{{0.5, kBlue, "a"}}, 0}, {100, 50, 120, 32}),
              ElementsAre("fillRoundedRect (110 56 100 20) r10 rgba(0.12 0.12 0.12 0.85)",
                          "strokeRoundedRect (110 56 100 20) r10 rgba(1 1 1 0.12) w1", "saveState",
                          "clipToRoundedRect (110 56 100 20) r10",
                          "fillRect (110 56 50 20) rgba(0 0 1 0.92)",
                          "fillRect (159 56 1 20) rgba(0 0 0 0.25)",
                          "fillRect (202 56 8 20) rgba(0.2 0.9 0.45 0.35)", "restoreState",
                          "fillRoundedRect (111 66 98 9) r4 rgba(1 1 1 0.06)"));
}

TEST(MemoryPressureView, DrawsAThinnerTrackOfTheCardsBelow) {
  MemoryPressureView view;
  const Commands alone = drawn(view, {0, 16, 280, 36});
  view.gpu = GpuTrack{{{0.5, kBlue, "a"}}, 0.9};
  const Commands both = drawn(view, {0, 0, 280, 52});
  const Commands below(both.begin(), both.end() - static_cast<std::ptrdiff_t>(alone.size()));
  EXPECT_THAT(below, ElementsAre("fillRoundedRect (10 6 260 10) r5 rgba(0.12 0.12 0.12 0.85)",
                                 "strokeRoundedRect (10 6 260 10) r5 rgba(1 1 1 0.12) w1",
                                 "saveState", "clipToRoundedRect (10 6 260 10) r5",
                                 "fillRect (10 6 130 10) rgba(0 0 1 0.92)",
                                 "fillRect (139 6 1 10) rgba(0 0 0 0.25)",
                                 "fillRect (249.2 6 20.8 10) rgba(1 0.35 0.3 0.45)", "restoreState",
                                 "fillRoundedRect (11 11 258 4) r4 rgba(1 1 1 0.06)"));
  // And the strip itself as without cards.
  EXPECT_EQ(Commands(both.begin() + static_cast<std::ptrdiff_t>(below.size()), both.end()), alone);
}

TEST(MemoryPressureView, DrawsSegmentsFromLeftToRightEachWithADivider) {
  EXPECT_THAT(
      segmentsDrawn({{0.25, kBlue, "a"}, {0.1, kRed, "b"}}),
      ElementsAre("fillRect (10 6 65 24) rgba(0 0 1 0.92)", "fillRect (74 6 1 24) rgba(0 0 0 0.25)",
                  "fillRect (75 6 26 24) rgba(1 0 0 0.92)",
                  "fillRect (100 6 1 24) rgba(0 0 0 0.25)"));
}

TEST(MemoryPressureView, ShrinksSegmentsThatTogetherOverflowTheTrack) {
  const std::vector<Segment> segments{{0.75, kBlue, "a"}, {0.5, kRed, "b"}};
  EXPECT_DOUBLE_EQ((MemoryPressureView{segments, 0}.scale()), 0.8);
  EXPECT_THAT(segmentsDrawn(segments), ElementsAre("fillRect (10 6 156 24) rgba(0 0 1 0.92)",
                                                   "fillRect (165 6 1 24) rgba(0 0 0 0.25)",
                                                   "fillRect (166 6 104 24) rgba(1 0 0 0.92)",
                                                   "fillRect (269 6 1 24) rgba(0 0 0 0.25)"));
}

TEST(MemoryPressureView, NeverStretchesSegments) {
  EXPECT_DOUBLE_EQ((MemoryPressureView{{{0.5, kBlue, "a"}, {0.5, kRed, "b"}}, 0}.scale()), 1);
  EXPECT_DOUBLE_EQ((MemoryPressureView{{{0.1, kBlue, "a"}}, 0}.scale()), 1);
  EXPECT_DOUBLE_EQ(MemoryPressureView{}.scale(), 1);
}

TEST(MemoryPressureView, SkipsASegmentOfHalfAPointAndDoesNotMoveTheNext) {
  // A track 256 wide: its 512th part is exactly half a point.
  EXPECT_THAT(segmentsDrawn({{1.0 / 512, kBlue, "a"}, {0.5, kRed, "b"}}, {0, 0, 276, 36}),
              ElementsAre("fillRect (10 6 128 24) rgba(1 0 0 0.92)",
                          "fillRect (137 6 1 24) rgba(0 0 0 0.25)"));
  EXPECT_EQ(segmentsDrawn({{1.01 / 512, kBlue, "a"}}, {0, 0, 276, 36}).size(), 2U);
}

TEST(MemoryPressureView, StopsAtTheRightEdge) {
  EXPECT_THAT(segmentsDrawn({{1.0, kBlue, "a"}, {0.0, kRed, "b"}}),
              ElementsAre("fillRect (10 6 260 24) rgba(0 0 1 0.92)",
                          "fillRect (269 6 1 24) rgba(0 0 0 0.25)"));
  // A segment after a full track would be drawn if its width alone decided.
  MemoryPressureView overfull{{{1.0, kBlue, "a"}, {0.01, kRed, "b"}, {-0.01, kRed, "c"}}, 0};
  ASSERT_DOUBLE_EQ(overfull.scale(), 1);
  EXPECT_EQ(drawn(overfull).size(), 9U);
}

TEST(MemoryPressureView, DrawsThePressureOverTheSegments) {
  const Commands all = drawn({{{1.0, kBlue, "a"}}, 0.9});
  EXPECT_EQ(all.at(4), "fillRect (10 6 260 24) rgba(0 0 1 0.92)");
  EXPECT_EQ(all.at(6), "fillRect (249.2 6 20.8 24) rgba(1 0.35 0.3 0.45)");
}

struct SmallRow {
  const char* name;
  Rectangle bounds;
  bool isDrawn;
};

class SmallStrip : public testing::TestWithParam<SmallRow> {};

TEST_P(SmallStrip, DrawsNothingOnATrackOfFourPoints) {
  EXPECT_EQ(!drawn({}, GetParam().bounds).empty(), GetParam().isDrawn);
}

INSTANTIATE_TEST_SUITE_P(Table, SmallStrip,
                         testing::Values(SmallRow{"Width24", {0, 0, 24, 36}, false},
                                         SmallRow{"Width25", {0, 0, 25, 36}, true},
                                         SmallRow{"Height16", {0, 0, 280, 16}, false},
                                         SmallRow{"Height17", {0, 0, 280, 17}, true},
                                         SmallRow{"Nothing", {0, 0, 0, 0}, false}),
                         rowName<SmallRow>);

struct PressureRow {
  const char* name;
  double pressure;
  const char* color;
};

class PressureColor : public testing::TestWithParam<PressureRow> {};

TEST_P(PressureColor, HasTheColorOfThePressure) {
  EXPECT_EQ(drawn({{}, GetParam().pressure}).at(4),
            "fillRect (249.2 6 20.8 24) " + std::string(GetParam().color));
}

constexpr const char* kLowPressure = "rgba(0.2 0.9 0.45 0.35)";
constexpr const char* kMediumPressure = "rgba(0.95 0.85 0.2 0.4)";
constexpr const char* kHighPressure = "rgba(1 0.35 0.3 0.45)";

INSTANTIATE_TEST_SUITE_P(Table, PressureColor,
                         testing::Values(PressureRow{"None", 0, kLowPressure},
                                         PressureRow{"JustBelowYellow", 0.5499, kLowPressure},
                                         PressureRow{"ExactlyYellow", 0.55, kMediumPressure},
                                         PressureRow{"JustBelowRed", 0.7999, kMediumPressure},
                                         PressureRow{"ExactlyRed", 0.8, kHighPressure},
                                         PressureRow{"All", 1, kHighPressure}),
                         rowName<PressureRow>);

}  // namespace
