#include "frontends/terminal/color_depth.h"

#include <gtest/gtest.h>

#include <set>

#include "fakes/row_name.h"
#include "ui/process_color.h"

using terminal::ColorDepth;

namespace {

struct ColorDepthRow {
  const char* name;
  terminal::ColorHints hints;
  ColorDepth depth;
};

class ColorDepths : public testing::TestWithParam<ColorDepthRow> {};

TEST_P(ColorDepths, FollowTheTerminalAndItsUser) {
  EXPECT_EQ(terminal::colorDepth(GetParam().hints), GetParam().depth);
}

constexpr ColorDepthRow kColorDepthRows[] = {
    {"None", {.colors = -1}, ColorDepth::none},
    {"Two", {.colors = 2}, ColorDepth::none},
    {"Eight", {.colors = 8}, ColorDepth::eight},
    {"Sixteen", {.colors = 16}, ColorDepth::eight},
    {"Palette", {.colors = 256}, ColorDepth::palette256},
    {"DirectByName", {.colors = 1 << 24, .directByName = true}, ColorDepth::direct},
    {"Truecolor", {.colors = 256, .colorTerm = "truecolor"}, ColorDepth::direct},
    {"TwentyFourBit", {.colors = 8, .colorTerm = "24bit"}, ColorDepth::direct},
    {"OtherColorTerm", {.colors = 256, .colorTerm = "rxvt"}, ColorDepth::palette256},
    {"NoColor",
     {.colors = 256, .directByName = true, .colorTerm = "truecolor", .noColor = "0"},
     ColorDepth::none},
    {"EmptyNoColor", {.colors = 256, .noColor = ""}, ColorDepth::palette256},
    {"TruecolorOnATerminalWithoutColors",
     {.colors = -1, .colorTerm = "truecolor"},
     ColorDepth::none},
};

INSTANTIATE_TEST_SUITE_P(Table, ColorDepths, testing::ValuesIn(kColorDepthRows),
                         rowName<ColorDepthRow>);

struct NearRow {
  const char* name;
  terminal::Rgb color;
  int of256;
  int of8;
};

class NearestColors : public testing::TestWithParam<NearRow> {};

TEST_P(NearestColors, AreThoseThatTheTerminalHas) {
  EXPECT_EQ(terminal::nearestOf256(GetParam().color), GetParam().of256);
  EXPECT_EQ(terminal::nearestOf8(GetParam().color), GetParam().of8);
}

constexpr NearRow kNearRows[] = {
    {"Black", {0, 0, 0}, 16, 0},
    {"White", {255, 255, 255}, 231, 7},
    {"Red", {255, 0, 0}, 196, 1},
    {"Green", {0, 255, 0}, 46, 2},
    {"Blue", {0, 0, 255}, 21, 4},
    {"CubeColor", {95, 135, 175}, 67, 4},
    {"MiddleGrey", {128, 128, 128}, 244, 7},
    {"Track", {38, 38, 38}, 235, 0},
    {"Yellow", {242, 217, 51}, 221, 3},
};

INSTANTIATE_TEST_SUITE_P(Table, NearestColors, testing::ValuesIn(kNearRows), rowName<NearRow>);

TEST(NearestColors, KeepTheProcessColorsApartOn256) {
  std::set<int> seen;
  for (const Color& color : ProcessColor::palette()) {
    seen.insert(terminal::nearestOf256(terminal::painted(color, {})));
  }
  EXPECT_EQ(seen.size(), ProcessColor::palette().size());
}

TEST(PaintedColor, ShowsTheGroundAsFarAsItIsTransparent) {
  EXPECT_EQ(terminal::painted({1, 1, 1, 0}, {10, 20, 30}), (terminal::Rgb{10, 20, 30}));
  EXPECT_EQ(terminal::painted({1, 0, 0, 1}, {10, 20, 30}), (terminal::Rgb{255, 0, 0}));
  EXPECT_EQ(terminal::painted({1, 0, 0, 0.5}, {0, 100, 0}), (terminal::Rgb{128, 50, 0}));
}

}  // namespace
