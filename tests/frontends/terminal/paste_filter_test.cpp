#include "frontends/terminal/paste_filter.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "fakes/row_name.h"

using terminal::Input;
using terminal::PasteFilter;

namespace {

using Kind = Input::Kind;

Input typedLetter(char32_t character) {
  return {.kind = Kind::character, .character = character};
}

/// What a terminal that is slow to send a bracket makes of it.
std::vector<Input> inSingleBytes(std::u32string_view behindTheEscape) {
  std::vector<Input> inputs{{.kind = Kind::escape}};
  for (const char32_t character : behindTheEscape) inputs.push_back(typedLetter(character));
  return inputs;
}

std::vector<Input> operator+(std::vector<Input> all, const std::vector<Input>& more) {
  all.insert(all.end(), more.begin(), more.end());
  return all;
}

const std::vector<Input> kBegin{{.kind = Kind::pasteBegin}};
const std::vector<Input> kPasteEnd{{.kind = Kind::pasteEnd}};
const std::vector<Input> kEnter{{.kind = Kind::enter}};

struct PasteFilterRow {
  const char* name;
  std::vector<Input> inputs;
  std::string taken;  ///< one character for each: "x" when it is taken, "." when not
};

class Pastes : public testing::TestWithParam<PasteFilterRow> {};

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
        PasteFilterRow{"Keys", kEnter + kEnter, ".."},
        PasteFilterRow{"Paste", kBegin + kEnter + kPasteEnd + kEnter, "xxx."},
        PasteFilterRow{"Empty", kBegin + kPasteEnd + kEnter, "xx."},
        PasteFilterRow{"Endless", kBegin + kEnter + kEnter, "xxx"},
        PasteFilterRow{"TwiceBegun", kBegin + kBegin + kPasteEnd + kEnter, "xxx."},
        PasteFilterRow{"EndAlone", kPasteEnd + kEnter, "x."},
        PasteFilterRow{"EndTwice", kBegin + kPasteEnd + kPasteEnd + kEnter, "xxx."},
        PasteFilterRow{"TwoPastes", kBegin + kPasteEnd + kEnter + kBegin + kEnter + kPasteEnd,
                       "xx.xxx"},
        PasteFilterRow{"BeginInBytes", inSingleBytes(U"[200~") + kEnter + kPasteEnd, ".....xxx"},
        PasteFilterRow{"EndInBytes", kBegin + inSingleBytes(U"[201~") + kEnter, "xxxxxxx."},
        PasteFilterRow{"BothInBytes",
                       inSingleBytes(U"[200~") + kEnter + inSingleBytes(U"[201~") + kEnter,
                       ".....xxxxxxxx."},
        PasteFilterRow{"EndInBytesAlone", inSingleBytes(U"[201~") + kEnter, ".....x."},
        PasteFilterRow{"EscapeTwice", inSingleBytes(U"") + inSingleBytes(U"[200~") + kEnter,
                       "......xx"},
        PasteFilterRow{"OtherSequence", inSingleBytes(U"[202~") + kEnter, "......."},
        PasteFilterRow{"BrokenOff", inSingleBytes(U"[20") + kEnter + inSingleBytes(U"0~") + kEnter,
                       "........."},
        PasteFilterRow{"WithoutEscape",
                       {typedLetter(U'['), typedLetter(U'2'), typedLetter(U'0'), typedLetter(U'0'),
                        typedLetter(U'~')},
                       "....."},
        PasteFilterRow{"EscapeInsideAPaste",
                       kBegin + inSingleBytes(U"") + kEnter + kPasteEnd + kEnter, "xxxx."}),
    rowName<PasteFilterRow>);

TEST(PasteWithoutAnEnd, IsOverWhenNothingHasComeForAWhile) {
  PasteFilter filter;
  const auto takesEnterAt = [&](double when) {
    return filter.takes({.kind = Kind::enter, .came = when});
  };
  std::ignore = filter.takes({.kind = Kind::pasteBegin, .came = 100});
  EXPECT_TRUE(takesEnterAt(101.9)) << "a slow line";
  EXPECT_TRUE(takesEnterAt(103.8));
  EXPECT_FALSE(takesEnterAt(105.9));
  EXPECT_FALSE(takesEnterAt(106));
}

}  // namespace
