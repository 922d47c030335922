#include "frontends/qt/menu_label.h"

#include <gtest/gtest.h>
#include <re2/re2.h>

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

TEST_P(LabelTest, ShowsTheTitleAsItIs) {
  EXPECT_EQ(menuLabel(GetParam().title).toStdString(), GetParam().inQMenu);
  EXPECT_EQ(hostMenuLabel(GetParam().title, TrayHostKind::usual), GetParam().atHost);
}

INSTANTIATE_TEST_SUITE_P(
    Titles, LabelTest,
    testing::Values(LabelRow{"Plain", "firefox", "firefox", "firefox"},
                    LabelRow{"Underscore", "train_lora.py", "train_lora.py", "train__lora.py"},
                    LabelRow{"TwoUnderscores", "__main__", "__main__", "____main____"},
                    LabelRow{"Ampersand", "R&D", "R&&D", "R&D"},
                    LabelRow{"TwoAmpersands", "a && b", "a &&&& b", "a && b"},
                    LabelRow{"Markup", "<b>x</b>", "<b>x</b>", "<b>x</b>"},
                    LabelRow{"BeyondAscii", "★ é 模型 🔒", "★ é 模型 🔒", "★ é 模型 🔒"},
                    LabelRow{"RightToLeft", "שלום_  ·  1 MB", "\u200Eשלום_\u200E  ·  1 MB",
                             "\u200Eשלום__\u200E  ·  1 MB"},
                    LabelRow{"LineBreakAndTab", "a\nb\tc", "a\uFFFDb\uFFFDc", "a\uFFFDb\uFFFDc"},
                    LabelRow{"Override", "a\u202Eb", "a\uFFFDb", "a\uFFFDb"},
                    LabelRow{"Empty", "", "", ""}),
    rowName<LabelRow>);

TEST(MenuLabel, CutsATitleThatNoScreenCouldShow) {
  const std::string endless(100000, 'x');
  EXPECT_LE(menuLabel(endless).size(), 120);
  EXPECT_LE(text::characterCount(hostMenuLabel(endless, TrayHostKind::usual)), 120U);
  EXPECT_TRUE(menuLabel(endless).endsWith(toQString("…")));
}

/// What GNOME Shell's AppIndicator extension makes of a label (dbusMenu.js, versions 46 to 63):
/// one replacement, of the first underscore that something other than an underscore follows.
std::string shownByGnomeShell(const std::string& label) {
  std::string shown = label;
  RE2::Replace(&shown, "_([^_])", "\\1");
  return shown;
}

/// What Plasma makes of one: a pair of underscores is one, a single one marks an access key.
std::string shownByPlasma(const std::string& label) {
  std::string text;
  for (std::size_t i = 0; i < label.size(); ++i) {
    if (label[i] == '_' && ++i == label.size()) break;
    text += label[i];
  }
  return text;
}

class HostLabelTest : public testing::TestWithParam<const char*> {};

TEST_P(HostLabelTest, IsShownAsItIsByEveryHost) {
  EXPECT_EQ(shownByGnomeShell(hostMenuLabel(GetParam(), TrayHostKind::gnomeShell)), GetParam());
  EXPECT_EQ(shownByPlasma(hostMenuLabel(GetParam(), TrayHostKind::usual)), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Titles, HostLabelTest,
                         testing::Values("firefox", "a_b", "train_lora_v2.py", "_", "__", "_a",
                                         "a_", "a__", "__main__", "_a_", "a__b_c", "a_b__c",
                                         "___x___y", "_é_模型", "R&D", "a && b", "&_&", "<b>x</b>",
                                         "<b>_</b>", "&lt;&amp;_", "50%", "100%% _%s_%d", "%_",
                                         "\\_", "$1_$&", ""));

struct StripLabelRow {
  const char* name;
  double pressure;
  const char* label;
};

class StripLabelTest : public testing::TestWithParam<StripLabelRow> {};

TEST_P(StripLabelTest, FillsTenCells) {
  MemoryPressureView strip;
  strip.pressure = GetParam().pressure;
  EXPECT_EQ(stripLabel(strip), GetParam().label);
}

INSTANTIATE_TEST_SUITE_P(Pressures, StripLabelTest,
                         testing::Values(StripLabelRow{"None", 0, "░░░░░░░░░░ 0%"},
                                         StripLabelRow{"Some", 0.62, "██████░░░░ 62%"},
                                         StripLabelRow{"RoundedUp", 0.75, "████████░░ 75%"},
                                         StripLabelRow{"All", 1, "██████████ 100%"}),
                         rowName<StripLabelRow>);

TEST(PlainToolTip, KeepsMarkupFromBeingRead) {
  EXPECT_TRUE(plainToolTip("<img src=x> & y").contains("&lt;img src=x&gt; &amp; y"));
}

TEST(PlainToolTip, KeepsLines) {
  EXPECT_TRUE(plainToolTip("one\ntwo").contains("one<br>two"));
}

TEST(PlainToolTip, IsNoneForNoText) {
  EXPECT_TRUE(plainToolTip("").isEmpty());
}

TEST(PlainToolTip, CutsWhatFillsTheScreen) {
  EXPECT_LT(plainToolTip(std::string(100000, 'x')).size(), 1100);
}

}  // namespace
