#include "frontends/qt/menu_label.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/row_name.h"
#include "frontends/qt/qt_text.h"
#include "text/unicode.h"

namespace {

struct LabelRow {
  const char* name;
  std::string title;
  std::string inQMenu;
  std::string atHost;
};

class LabelTest : public testing::TestWithParam<LabelRow> {};

TEST_P(LabelTest, showsTheTitleAsItIs) {
  EXPECT_EQ(menuLabel(GetParam().title).toStdString(), GetParam().inQMenu);
  EXPECT_EQ(hostMenuLabel(GetParam().title), GetParam().atHost);
}

INSTANTIATE_TEST_SUITE_P(
    Titles, LabelTest,
    testing::Values(LabelRow{"plain", "firefox", "firefox", "firefox"},
                    LabelRow{"underscore", "train_lora.py", "train_lora.py", "train__lora.py"},
                    LabelRow{"twoUnderscores", "__main__", "__main__", "____main____"},
                    LabelRow{"ampersand", "R&D", "R&&D", "R&D"},
                    LabelRow{"twoAmpersands", "a && b", "a &&&& b", "a && b"},
                    LabelRow{"markup", "<b>x</b>", "<b>x</b>", "<b>x</b>"},
                    LabelRow{"beyondAscii", "★ é 模型 🔒", "★ é 模型 🔒", "★ é 模型 🔒"},
                    LabelRow{"rightToLeft", "שלום_  ·  1 MB", "\u200Eשלום_\u200E  ·  1 MB",
                             "\u200Eשלום__\u200E  ·  1 MB"},
                    LabelRow{"lineBreakAndTab", "a\nb\tc", "a\uFFFDb\uFFFDc", "a\uFFFDb\uFFFDc"},
                    LabelRow{"override", "a\u202Eb", "a\uFFFDb", "a\uFFFDb"},
                    LabelRow{"empty", "", "", ""}),
    rowName<LabelRow>);

TEST(MenuLabel, cutsATitleThatNoScreenCouldShow) {
  const std::string endless(100000, 'x');
  EXPECT_LE(menuLabel(endless).size(), 120);
  EXPECT_LE(text::characterCount(hostMenuLabel(endless)), 120U);
  EXPECT_TRUE(menuLabel(endless).endsWith(toQString("…")));
}

struct BarRow {
  const char* name;
  double pressure;
  const char* label;
};

class BarTest : public testing::TestWithParam<BarRow> {};

TEST_P(BarTest, fillsTenCells) {
  MemoryPressureView strip;
  strip.pressure = GetParam().pressure;
  EXPECT_EQ(barLabel(strip), GetParam().label);
}

INSTANTIATE_TEST_SUITE_P(Pressures, BarTest,
                         testing::Values(BarRow{"none", 0, "░░░░░░░░░░ 0%"},
                                         BarRow{"some", 0.62, "██████░░░░ 62%"},
                                         BarRow{"roundedUp", 0.75, "████████░░ 75%"},
                                         BarRow{"all", 1, "██████████ 100%"}),
                         rowName<BarRow>);

TEST(PlainToolTip, keepsMarkupFromBeingRead) {
  EXPECT_TRUE(plainToolTip("<img src=x> & y").contains("&lt;img src=x&gt; &amp; y"));
}

TEST(PlainToolTip, keepsLines) {
  EXPECT_TRUE(plainToolTip("one\ntwo").contains("one<br>two"));
}

TEST(PlainToolTip, isNoneForNoText) {
  EXPECT_TRUE(plainToolTip("").isEmpty());
}

TEST(PlainToolTip, cutsWhatFillsTheScreen) {
  EXPECT_LT(plainToolTip(std::string(100000, 'x')).size(), 1100);
}

}  // namespace
