#include "ui/glyph_stand_ins.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"

namespace {

bool never(std::string_view) {
  return false;
}

struct Row {
  const char* name;
  const char* text;
  const char* ascii;
};

class StandIns : public testing::TestWithParam<Row> {};

TEST_P(StandIns, AreAscii) {
  EXPECT_EQ(withStandIns(GetParam().text, never), GetParam().ascii);
}

INSTANTIATE_TEST_SUITE_P(
    , StandIns,
    testing::Values(Row{"AsciiStays", "System  4.0 GB [x]", "System  4.0 GB [x]"},
                    Row{"Star", "★ Ollama Server", "* Ollama Server"},
                    Row{"KeepAlive", "agent  ·  on ↺", "agent  -  on ~"},
                    Row{"Lock", "dockerd 🔒", "dockerd [locked]"},
                    Row{"Ellipsis", "Full details…", "Full details..."},
                    Row{"Dash", "— Top RAM —", "- Top RAM -"},
                    Row{"Quotes", "“Docker’s”", "\"Docker's\""},
                    Row{"BulletAndArrow", "• Open → Quit", "* Open -> Quit"},
                    Row{"Arrows", "↑ ↓ ← →", "^ v <- ->"}, Row{"Title", "Vorda²", "Vorda2"},
                    Row{"Copyright", "© 2026", "(c) 2026"}, Row{"OthersLettersStay", "模é", "模é"},
                    Row{"BrokenBytesStay", "a\xE2\x98", "a\xE2\x98"}),
    rowName<Row>);

TEST(DrawnGlyphs, Stay) {
  std::vector<std::string> asked;
  const std::string shown = withStandIns("★ é 🔒 ★", [&](std::string_view glyph) {
    asked.emplace_back(glyph);
    return glyph == "★";
  });
  EXPECT_EQ(shown, "★ é [locked] ★");
  EXPECT_EQ(asked, (std::vector<std::string>{"★", "🔒", "★"}));
}

}  // namespace
