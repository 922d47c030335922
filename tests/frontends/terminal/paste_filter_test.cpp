#include "frontends/terminal/paste_filter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"

using terminal::Input;
using terminal::PasteFilter;

namespace {

using Kind = Input::Kind;

Input letter(char32_t character) {
  return {.kind = Kind::character, .character = character};
}

/// What a terminal that is slow to send a bracket makes of it.
std::vector<Input> inSingleBytes(std::u32string_view behindTheEscape) {
  std::vector<Input> inputs{{.kind = Kind::escape}};
  for (const char32_t character : behindTheEscape) inputs.push_back(letter(character));
  return inputs;
}

std::vector<Input> operator+(std::vector<Input> all, const std::vector<Input>& more) {
  all.insert(all.end(), more.begin(), more.end());
  return all;
}

const std::vector<Input> kBegin{{.kind = Kind::pasteBegin}};
const std::vector<Input> kEnd{{.kind = Kind::pasteEnd}};
const std::vector<Input> kEnter{{.kind = Kind::enter}};

struct Row {
  const char* name;
  std::vector<Input> inputs;
  std::string taken;  ///< one character for each: "x" when it is taken, "." when not
};

class Pastes : public testing::TestWithParam<Row> {};

TEST_P(Pastes, AreTaken) {
  PasteFilter filter;
  std::string taken;
  double now = 100;
  for (Input input : GetParam().inputs) {
    input.came = now += 0.06;
    taken += filter.takes(input) ? 'x' : '.';
  }
  EXPECT_EQ(taken, GetParam().taken);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Pastes,
    testing::Values(
        Row{"Keys", kEnter + kEnter, ".."}, Row{"Paste", kBegin + kEnter + kEnd + kEnter, "xxx."},
        Row{"Empty", kBegin + kEnd + kEnter, "xx."},
        Row{"Endless", kBegin + kEnter + kEnter, "xxx"},
        Row{"TwiceBegun", kBegin + kBegin + kEnd + kEnter, "xxx."},
        Row{"EndAlone", kEnd + kEnter, "x."},
        Row{"EndTwice", kBegin + kEnd + kEnd + kEnter, "xxx."},
        Row{"TwoPastes", kBegin + kEnd + kEnter + kBegin + kEnter + kEnd, "xx.xxx"},
        Row{"BeginInBytes", inSingleBytes(U"[200~") + kEnter + kEnd, ".....xxx"},
        Row{"EndInBytes", kBegin + inSingleBytes(U"[201~") + kEnter, "xxxxxxx."},
        Row{"BothInBytes", inSingleBytes(U"[200~") + kEnter + inSingleBytes(U"[201~") + kEnter,
            ".....xxxxxxxx."},
        Row{"EndInBytesAlone", inSingleBytes(U"[201~") + kEnter, ".....x."},
        Row{"EscapeTwice", inSingleBytes(U"") + inSingleBytes(U"[200~") + kEnter, "......xx"},
        Row{"OtherSequence", inSingleBytes(U"[202~") + kEnter, "......."},
        Row{"BrokenOff", inSingleBytes(U"[20") + kEnter + inSingleBytes(U"0~") + kEnter,
            "........."},
        Row{"WithoutEscape",
            {letter(U'['), letter(U'2'), letter(U'0'), letter(U'0'), letter(U'~')},
            "....."},
        Row{"EscapeInsideAPaste", kBegin + inSingleBytes(U"") + kEnter + kEnd + kEnter, "xxxx."}),
    rowName<Row>);

TEST(PasteWithoutAnEnd, IsOverWhenNothingHasComeForAWhile) {
  PasteFilter filter;
  const auto takesEnterAt = [&](double when) {
    return filter.takes({.kind = Kind::enter, .came = when});
  };
  filter.takes({.kind = Kind::pasteBegin, .came = 100});
  EXPECT_TRUE(takesEnterAt(101.9)) << "a slow line";
  EXPECT_TRUE(takesEnterAt(103.8));
  EXPECT_FALSE(takesEnterAt(105.9));
  EXPECT_FALSE(takesEnterAt(106));
}

}  // namespace
