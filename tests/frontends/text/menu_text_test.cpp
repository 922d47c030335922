#include "frontends/text/menu_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "ui/menu_construction.h"

namespace {

std::string times(int count, const std::string& text) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

struct MenuTextRow {
  const char* name;
  std::vector<double> fractions;
  double pressure;
  std::string text;
};

class StripText : public testing::TestWithParam<MenuTextRow> {};

TEST_P(StripText, HasFortyCellsAndTheUsedShare) {
  MemoryPressureView strip;
  strip.pressure = GetParam().pressure;
  for (const double fraction : GetParam().fractions) strip.segments.push_back({fraction});
  EXPECT_EQ(stripText(strip), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StripText,
    testing::Values(
        MenuTextRow{"Empty", {}, 0, "[" + times(40, "·") + "]  0%"},
        MenuTextRow{"Half", {0.5}, 0.58, "[" + times(20, "A") + times(20, "·") + "]  58%"},
        MenuTextRow{
            "InStripOrder",
            {0.25, 0.5, 0.1},
            1,
            "[" + times(10, "A") + times(20, "B") + times(4, "C") + times(6, "·") + "]  100%"},
        MenuTextRow{"RoundedDown", {0.049, 0.0999}, 0, "[ABBB" + times(36, "·") + "]  0%"},
        MenuTextRow{"AtLeastOneCell", {0.003, 0.0021}, 0, "[AB" + times(38, "·") + "]  0%"},
        MenuTextRow{"ShrunkWhenTheyOverflow",
                    {0.75, 0.5},
                    0.5,
                    "[" + times(24, "A") + times(16, "B") + "]  50%"},
        MenuTextRow{"FullTrack", {1.0}, 0.9, "[" + times(40, "A") + "]  90%"},
        MenuTextRow{"SmallSegmentsBeyondTheEndAreCutOff",
                    {0.98, 0.003, 0.003},
                    0,
                    "[" + times(39, "A") + "B]  0%"},
        MenuTextRow{"PercentageIsRounded", {}, 0.585, "[" + times(40, "·") + "]  58%"},
        MenuTextRow{"PercentageIsRoundedUp", {}, 0.996, "[" + times(40, "·") + "]  100%"}),
    rowName<MenuTextRow>);

Menu menuOf(std::vector<MenuItem> items) {
  return {std::move(items)};
}

MenuItem stripItem(std::vector<Segment> segments) {
  return {
      .kind = MenuItem::Kind::strip,
      .enabled = false,
      .strip = std::make_shared<MemoryPressureView>(MemoryPressureView{std::move(segments), 0.25})};
}

TEST(MenuText, HasALinePerItem) {
  const MenuItem process{.title = "★ Ollama Server  ·   1.5 GB",
                         .process = ProcessReference{312, 1},
                         .submenu = {{.title = "Quit"}}};
  const MenuItem other{.title = "bash  ·    60 MB", .process = ProcessReference{313, {}}};
  EXPECT_EQ(menuText(menuOf({stripItem({{0.1, {}, "x", 311}, {0.1, {}, "y", 312}}),
                             {.title = "System   8.0 / 16 GB used", .enabled = false},
                             {.kind = MenuItem::Kind::separator},
                             {.title = "— Top RAM (colors match graph) —", .enabled = false},
                             process,
                             other,
                             {.kind = MenuItem::Kind::separator},
                             {.title = "Refresh now", .action = Action::refreshNow},
                             {.kind = MenuItem::Kind::separator},
                             {.title = "Quit Vorda", .action = Action::quitApp}})),
            "[AAAABBBB" + times(32, "·") +
                "]  25%\n"
                "System   8.0 / 16 GB used\n"
                "\n"
                "— Top RAM (colors match graph) —\n"
                "★ Ollama Server  ·   1.5 GB  ·  pid 312  [B]\n"
                "bash  ·    60 MB  ·  pid 313\n")
      << "without the commands, which nobody can choose";
}

TEST(MenuText, MarksAProcessInEveryRowOfIts) {
  const MenuItem row{.title = "x", .process = ProcessReference{5, {}}};
  EXPECT_EQ(menuText(menuOf({row, stripItem({{1.0, {}, "x", 5}}), row})),
            "x  ·  pid 5  [A]\n[" + times(40, "A") + "]  25%\nx  ·  pid 5  [A]\n");
}

TEST(MenuText, NobodysNameForgesALine) {
  const MenuItem row{.title = "x\nQuit Vorda\x1B[2J\u202E", .process = ProcessReference{5, {}}};
  EXPECT_EQ(menuText(menuOf({row})), "x\uFFFDQuit Vorda\uFFFD[2J\uFFFD  ·  pid 5\n");
}

TEST(MenuText, NobodysNameIsTakenForFigures) {
  const std::string name = "x  ·   9.9 GB  ·  pid 1  [A]\u3000y";
  const MenuItem row{
      .title = "★ " + name + "  ·    60 MB", .name = {4, 4 + name.size()}, .process = {{5, {}}}};
  EXPECT_EQ(menuText(menuOf({row})), "★ x · 9.9 GB · pid 1 [A] y  ·    60 MB  ·  pid 5\n");
}

/// A row as the menu builds it, of a process with this pid.
MenuItem rowOf(std::int32_t pid, const std::string& name, bool isProtected = false) {
  VordaProcess process;
  process.pid = pid;
  process.displayName = name;
  process.memMB = 60;
  process.isProtected = isProtected;
  process.ownerName = "grace  ·  pid 1";
  return MenuConstruction::processItem(process);
}

TEST(MenuText, FiguresOfASectionStandBelowEachOther) {
  EXPECT_EQ(menuText(menuOf({rowOf(1, "a"),
                             rowOf(20, "日本"),
                             rowOf(3, "abc"),
                             {.kind = MenuItem::Kind::separator},
                             {.title = "— heading —", .enabled = false},
                             rowOf(4, "longer")})),
            "a     ·    60 MB  ·  pid 1\n"
            "日本  ·    60 MB  ·  pid 20\n"
            "abc   ·    60 MB  ·  pid 3\n"
            "\n"
            "— heading —\n"
            "longer  ·    60 MB  ·  pid 4\n");
}

TEST(MenuText, SaysWhoseAProtectedProcessIs) {
  EXPECT_EQ(menuText(menuOf({rowOf(1, "a", true), rowOf(2, "b")})),
            "a  ·    60 MB 🔒  ·  pid 1  ·  owner grace · pid 1\n"
            "b  ·    60 MB     ·  pid 2\n");
}

TEST(MenuText, HasAnAsciiForm) {
  const MenuItem ollama{.title = "★ Ölama  ·   1.5 GB", .name = {4, 10}, .process = {{5, {}}}};
  EXPECT_EQ(menuText(menuOf({stripItem({{0.1, {}, "x", 5}}),
                             {.title = "— Top RAM —", .enabled = false},
                             ollama,
                             rowOf(1, "a", true)}),
                     CharacterSet::ascii),
            "[AAAA" + times(36, "-") +
                "]  25%\n"
                "- Top RAM -\n"
                "* ?lama  -   1.5 GB           -  pid 5  [A]\n"
                "a        -    60 MB [locked]  -  pid 1  -  owner grace - pid 1\n");
}

TEST(MenuText, OfNothingIsEmpty) {
  EXPECT_EQ(menuText({}), "");
}

}  // namespace
