#include "ui/strip_text.h"

#include <gtest/gtest.h>

#include <vector>

#include "fakes/row_name.h"

namespace {

struct LetterRow {
  const char* name;
  std::size_t place;
  char letter;
};

class SegmentLetter : public testing::TestWithParam<LetterRow> {};

TEST_P(SegmentLetter, CountsFromTheLeft) {
  EXPECT_EQ(segmentLetter(GetParam().place), GetParam().letter);
}

INSTANTIATE_TEST_SUITE_P(Table, SegmentLetter,
                         testing::Values(LetterRow{"First", 0, 'A'}, LetterRow{"Second", 1, 'B'},
                                         LetterRow{"Last", 25, 'Z'},
                                         LetterRow{"BeyondTheAlphabet", 26, '+'},
                                         LetterRow{"FarBeyond", 1000, '+'}),
                         rowName<LetterRow>);

struct OwnerRow {
  const char* name;
  std::int32_t pid;
  const char* tag;
};

class SegmentOfAProcess : public testing::TestWithParam<OwnerRow> {};

TEST_P(SegmentOfAProcess, IsItsTag) {
  MemoryPressureView strip;
  strip.segments = {{.pid = 7}, {.pid = 3}};
  EXPECT_EQ(segmentTag(strip, GetParam().pid), GetParam().tag);
}

INSTANTIATE_TEST_SUITE_P(Table, SegmentOfAProcess,
                         testing::Values(OwnerRow{"First", 7, "  [A]"},
                                         OwnerRow{"Second", 3, "  [B]"}, OwnerRow{"None", 9, ""}),
                         rowName<OwnerRow>);

struct LengthRow {
  const char* name;
  std::vector<double> fractions;
  std::size_t columns;
  std::vector<std::size_t> lengths;
};

class SegmentLength : public testing::TestWithParam<LengthRow> {};

TEST_P(SegmentLength, IsTheShareOfTheTrack) {
  MemoryPressureView strip;
  for (const double fraction : GetParam().fractions) strip.segments.push_back({fraction});
  std::vector<std::size_t> lengths;
  for (std::size_t place = 0; place < strip.segments.size(); ++place) {
    lengths.push_back(segmentLength(strip.segments, place, GetParam().columns));
  }
  EXPECT_EQ(lengths, GetParam().lengths);
}

INSTANTIATE_TEST_SUITE_P(
    Table, SegmentLength,
    testing::Values(LengthRow{"HalfAndQuarter", {0.5, 0.25}, 20, {10, 5}},
                    LengthRow{"RoundedDown", {0.19, 0.29}, 10, {1, 2}},
                    LengthRow{"AtLeastOne", {0.003, 0}, 20, {1, 1}},
                    LengthRow{"ShrunkWhenTheyOverflow", {0.75, 0.5}, 10, {6, 4}},
                    LengthRow{"All", {1.0}, 40, {40}},
                    LengthRow{"MoreThanThereIsRoomFor", {1.0, 0.003, 0.003}, 10, {9, 1, 1}},
                    LengthRow{"OneColumn", {0.5, 0.5}, 1, {1, 1}}),
    rowName<LengthRow>);

MemoryPressureView strip(double pressure, std::vector<Segment> segments) {
  MemoryPressureView view;
  view.pressure = pressure;
  view.segments = std::move(segments);
  return view;
}

TEST(StripDescription, NamesEverySegmentWithItsMemory) {
  EXPECT_EQ(stripDescription(strip(0.62, {{.label = "Ollama Server", .memMB = 4198},
                                          {.label = "firefox", .memMB = 312},
                                          {.label = "small", .memMB = 9.5}})),
            "Memory 62 percent used: Ollama Server 4.1 GB, firefox 312 MB, small 9.5 MB");
}

TEST(StripDescription, WithoutSegmentsSaysHowMuchIsUsed) {
  EXPECT_EQ(stripDescription(strip(0.004, {})), "Memory 0 percent used");
  EXPECT_EQ(stripDescription(strip(1, {})), "Memory 100 percent used");
}

TEST(StripDescription, ShortensLongNames) {
  const std::string words =
      stripDescription(strip(0.5, {{.label = std::string(100000, 'x'), .memMB = 100}}));
  EXPECT_EQ(words, "Memory 50 percent used: " + std::string(41, 'x') + "… 100 MB");
}

TEST(StripDescription, IsOneHarmlessLine) {
  EXPECT_EQ(stripDescription(strip(0.5, {{.label = "a\nb\u202Ec", .memMB = 100}})),
            "Memory 50 percent used: a\uFFFDb\uFFFDc 100 MB");
}

}  // namespace
