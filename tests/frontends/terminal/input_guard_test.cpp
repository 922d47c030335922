#include "frontends/terminal/input_guard.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/row_name.h"

using terminal::Input;
using terminal::InputGuard;
using terminal::Target;
using terminal::Targets;

namespace {

using Kind = Input::Kind;
using Verdict = InputGuard::Verdict;

constexpr int kLine = 3;

Target rowOf(std::int32_t pid, std::uint64_t identity = 1) {
  return {.row = itemKeys({{{.process = ProcessReference{pid, identity}}}}).front()};
}

/// Four rows, the last of which is selected.
Targets picture() {
  Targets targets{.size = {80, 24}, .selection = rowOf(kLine), .selectionY = kLine};
  for (std::int32_t pid = 0; pid <= kLine; ++pid) targets.lines.push_back(rowOf(pid));
  return targets;
}

Targets question() {
  static const int alert = 0;
  const Target button{.alert = &alert, .item = "Force Quit"};
  return {
      .size = {80, 24}, .selection = button, .asks = true, .lines = std::vector(kLine + 1, button)};
}

struct Event {
  Kind kind = Kind::nothing;
  double pause = 0;        ///< in seconds, since what was before it was read
  char32_t character = 0;  ///< of Kind::character
  double late = 0;         ///< how long it had been there when it was read, at most
  bool followed = false;
};

Event enter(double pause) {
  return {.kind = Kind::enter, .pause = pause};
}

Event letter(char32_t character, double pause) {
  return {.kind = Kind::character, .pause = pause, .character = character};
}

/// A guard with a clock.
class WatchedKeys {
 public:
  explicit WatchedKeys(const Targets& targets = picture()) { show(targets); }

  void show(const Targets& targets) { guard_.shown(targets, now_); }
  void wait(double seconds) { now_ += seconds; }
  Verdict read(const Event& event) {
    now_ += event.pause;
    return guard_.judge({.kind = event.kind,
                         .character = event.character,
                         .y = kLine,
                         .came = now_ - event.late,
                         .followed = event.followed},
                        now_);
  }

 private:
  InputGuard guard_;
  double now_ = 1000;
};

struct KeyRow {
  const char* name;
  std::vector<Event> events;
  Verdict verdict;  ///< of the last
  std::function<Targets()> picture = ::picture;
};

class ChoosingKeys : public testing::TestWithParam<KeyRow> {};

TEST_P(ChoosingKeys, CountOnlyWhenTheyArePressedForThemselves) {
  WatchedKeys keys(GetParam().picture());
  keys.wait(10);
  Verdict verdict = Verdict::counts;
  for (const Event& event : GetParam().events) verdict = keys.read(event);
  EXPECT_EQ(verdict, GetParam().verdict);
}

constexpr double kShort = 0.049;
constexpr double kLong = 0.051;

INSTANTIATE_TEST_SUITE_P(
    Table, ChoosingKeys,
    testing::Values(
        KeyRow{"Enter", {enter(0)}, Verdict::counts},
        KeyRow{"EnterRightAfterAKey", {{Kind::escape}, enter(kShort)}, Verdict::ignored},
        KeyRow{"EnterAfterAKey", {{Kind::escape}, enter(kLong)}, Verdict::counts},
        KeyRow{"EnterRightAfterAnUnknownKey", {{Kind::other}, enter(kShort)}, Verdict::ignored},
        KeyRow{"EnterAfterALetter", {letter(U'x', 0), enter(0.29)}, Verdict::tooSoon},
        KeyRow{"EnterLongAfterALetter", {letter(U'x', 0), enter(0.31)}, Verdict::counts},
        KeyRow{"EnterAfterAWordAndAKey",
               {letter(U'x', 0), {Kind::other, 0.06}, enter(0.06)},
               Verdict::tooSoon},
        KeyRow{
            "EnterWithMoreBehindIt", {{.kind = Kind::enter, .followed = true}}, Verdict::ignored},
        KeyRow{"EnterHeldDown", {enter(0), enter(0.5), enter(0.03)}, Verdict::ignored},
        KeyRow{"EnterHeldDownAtAConsole", {enter(0), enter(0.25), enter(0.092)}, Verdict::ignored},
        KeyRow{"EnterPressedTwice", {enter(0), enter(0.15)}, Verdict::counts},
        KeyRow{"EnterRightAfterAPaste", {{Kind::pasteEnd}, enter(kShort)}, Verdict::ignored},
        KeyRow{"EnterThatCameBeforeItsMoment",
               {{Kind::escape}, {.kind = Kind::enter, .pause = 0.4, .late = 0.4}},
               Verdict::ignored},
        KeyRow{"EnterRightAfterAKeyThatWasReadLate",
               {{.kind = Kind::escape, .pause = 1, .late = 1}, enter(kShort)},
               Verdict::ignored},
        KeyRow{"EnterRightAfterTheWheel", {{Kind::wheelUp}, enter(kShort)}, Verdict::counts},
        KeyRow{"RightRightAfterAKey",
               {{Kind::escape}, {.kind = Kind::right, .pause = kShort}},
               Verdict::ignored},
        KeyRow{"QRightAfterAKey", {{Kind::escape}, letter(U'q', kShort)}, Verdict::ignored},
        KeyRow{"QAfterALetter", {letter(U'x', 0), letter(U'q', 0.29)}, Verdict::tooSoon},
        KeyRow{"QLongAfterALetter", {letter(U'x', 0), letter(U'q', 0.31)}, Verdict::counts},
        KeyRow{"RAfterALetter", {letter(U'x', 0), letter(U'r', 0.29)}, Verdict::tooSoon},
        KeyRow{"QuestionMarkAfterALetter", {letter(U'x', 0), letter(U'?', 0.2)}, Verdict::tooSoon},
        KeyRow{
            "DownHeldDown", {{Kind::down}, {.kind = Kind::down, .pause = 0.03}}, Verdict::counts},
        KeyRow{"JHeldDown", {letter(U'j', 0), letter(U'j', 0.03)}, Verdict::counts},
        KeyRow{"LetterWithoutAMeaning", {letter(U'x', 0), letter(U'x', 0.01)}, Verdict::counts},
        KeyRow{"EscapeRightAfterAKey",
               {{Kind::down}, {.kind = Kind::escape, .pause = 0.01}},
               Verdict::counts},
        KeyRow{"ClickRightAfterAKey",
               {{Kind::escape}, {.kind = Kind::click, .pause = 0.01}},
               Verdict::counts},
        KeyRow{"Button", {enter(0)}, Verdict::counts, question},
        KeyRow{"ButtonBySpace", {letter(U' ', 0)}, Verdict::counts, question},
        KeyRow{"ButtonBySpaceInAText",
               {letter(U'x', 0), letter(U' ', 0.2)},
               Verdict::tooSoon,
               question},
        KeyRow{"RightBetweenButtons",
               {{Kind::tab}, {.kind = Kind::right, .pause = 0.01}},
               Verdict::counts,
               question}),
    rowName<KeyRow>);

struct PictureRow {
  const char* name;
  std::function<void(Targets&)> change;
  bool movesSelection;
  bool movesLine;  ///< under the pointer
};

class MovedPictures : public testing::TestWithParam<PictureRow> {
 protected:
  /// So long after the picture has changed.
  static Verdict verdictOf(Kind kind, double pause) {
    WatchedKeys keys;
    keys.wait(10);
    Targets changed = picture();
    GetParam().change(changed);
    keys.show(changed);
    keys.wait(0.1);
    keys.show(changed);  // drawn again, and nothing moved
    return keys.read({.kind = kind, .pause = pause - 0.1});
  }
  static Verdict soonWhen(bool moved) { return moved ? Verdict::tooSoon : Verdict::counts; }
};

TEST_P(MovedPictures, AreLookedAtForAWhile) {
  EXPECT_EQ(verdictOf(Kind::enter, 0.29), soonWhen(GetParam().movesSelection));
  EXPECT_EQ(verdictOf(Kind::enter, 0.31), Verdict::counts);
  EXPECT_EQ(verdictOf(Kind::click, 0.29), soonWhen(GetParam().movesLine));
  EXPECT_EQ(verdictOf(Kind::click, 0.31), Verdict::counts);
  EXPECT_EQ(verdictOf(Kind::escape, 0.11), Verdict::counts);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MovedPictures,
    testing::Values(
        PictureRow{"Same", [](auto&) {}, false, false},
        PictureRow{"OtherSelection", [](auto& now) { now.selection = rowOf(1); }, true, false},
        PictureRow{"SelectionElsewhere", [](auto& now) { now.selectionY = 1; }, true, false},
        PictureRow{"OtherRowUnderThePointer", [](auto& now) { now.lines[kLine] = rowOf(9); }, false,
                   true},
        PictureRow{"OtherRowElsewhere", [](auto& now) { now.lines[0] = rowOf(9); }, false, false},
        PictureRow{"LaterProcessWithTheSamePid",
                   [](auto& now) { now.lines[kLine] = rowOf(kLine, 2); }, false, true},
        PictureRow{"SubmenuOpens",
                   [](auto& now) { now.selection->item = now.lines[kLine].item = "Details"; }, true,
                   true},
        PictureRow{"AlertOpens", [](auto& now) { now = question(); }, true, true},
        PictureRow{"OtherSize",
                   [](auto& now) {
                     now.size = {81, 24};
                   },
                   true, true},
        PictureRow{"NothingSelected", [](auto& now) { now.selection.reset(); }, true, false}),
    rowName<PictureRow>);

TEST(Right, OpensWhatHasStoodStill) {
  WatchedKeys keys;
  EXPECT_EQ(keys.read({.kind = Kind::right, .pause = 0.29}), Verdict::tooSoon);
  EXPECT_EQ(keys.read({.kind = Kind::right, .pause = 0.2}), Verdict::counts);
}

TEST(MovingPicture, IsLookedAtAnewAfterEachMove) {
  WatchedKeys keys;
  Targets moving = picture();
  for (int i = 0; i < 10; ++i) {
    keys.wait(0.2);
    moving.selectionY = i;
    keys.show(moving);
  }
  EXPECT_EQ(keys.read(enter(0.2)), Verdict::tooSoon);
}

struct QuestionRow {
  const char* name;
  std::vector<Event> events;  ///< from the moment on that it is asked, by Enter
  Verdict verdict;            ///< of the last
};

class AskedByEnter : public testing::TestWithParam<QuestionRow> {};

TEST_P(AskedByEnter, IsAnsweredByASecondPressAlone) {
  WatchedKeys keys;
  keys.wait(10);
  keys.read(enter(0));
  keys.show(question());
  Verdict verdict = Verdict::counts;
  for (const Event& event : GetParam().events) verdict = keys.read(event);
  EXPECT_EQ(verdict, GetParam().verdict);
}

INSTANTIATE_TEST_SUITE_P(
    Table, AskedByEnter,
    testing::Values(QuestionRow{"FirstRepeat", {enter(0.66)}, Verdict::tooSoon},
                    QuestionRow{"LaterRepeats",
                                {enter(0.66), enter(0.03), enter(0.03), enter(0.03), enter(0.03)},
                                Verdict::ignored},
                    QuestionRow{"SecondPress", {enter(0.76)}, Verdict::counts},
                    QuestionRow{"HastyPresses", {enter(0.4), enter(0.4)}, Verdict::counts},
                    QuestionRow{"AnotherKeyBetween",
                                {{.kind = Kind::tab, .pause = 0.31}, enter(0.31)},
                                Verdict::counts}),
    rowName<QuestionRow>);

TEST(AKeyThatCameBeforeThePicture, IsNotForIt) {
  WatchedKeys keys;
  keys.wait(10);
  keys.show(question());
  EXPECT_EQ(keys.read({.kind = Kind::enter, .pause = 0.5, .late = 0.6}), Verdict::tooSoon);
}

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

struct PasteRow {
  const char* name;
  std::vector<Input> inputs;
  std::string taken;  ///< one character for each: "x" when it is taken, "." when not
};

class Pastes : public testing::TestWithParam<PasteRow> {};

TEST_P(Pastes, AreTaken) {
  InputGuard guard;
  std::string taken;
  double now = 100;
  for (Input input : GetParam().inputs) {
    input.came = now += 0.06;
    taken += guard.judge(input, now) == Verdict::pasted ? 'x' : '.';
  }
  EXPECT_EQ(taken, GetParam().taken);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Pastes,
    testing::Values(
        PasteRow{"Keys", kEnter + kEnter, ".."},
        PasteRow{"Paste", kBegin + kEnter + kPasteEnd + kEnter, "xxx."},
        PasteRow{"Empty", kBegin + kPasteEnd + kEnter, "xx."},
        PasteRow{"Endless", kBegin + kEnter + kEnter, "xxx"},
        PasteRow{"TwiceBegun", kBegin + kBegin + kPasteEnd + kEnter, "xxx."},
        PasteRow{"EndAlone", kPasteEnd + kEnter, "x."},
        PasteRow{"EndTwice", kBegin + kPasteEnd + kPasteEnd + kEnter, "xxx."},
        PasteRow{"TwoPastes", kBegin + kPasteEnd + kEnter + kBegin + kEnter + kPasteEnd, "xx.xxx"},
        PasteRow{"BeginInBytes", inSingleBytes(U"[200~") + kEnter + kPasteEnd, ".....xxx"},
        PasteRow{"EndInBytes", kBegin + inSingleBytes(U"[201~") + kEnter, "xxxxxxx."},
        PasteRow{"BothInBytes", inSingleBytes(U"[200~") + kEnter + inSingleBytes(U"[201~") + kEnter,
                 ".....xxxxxxxx."},
        PasteRow{"EndInBytesAlone", inSingleBytes(U"[201~") + kEnter, ".....x."},
        PasteRow{"EscapeTwice", inSingleBytes(U"") + inSingleBytes(U"[200~") + kEnter, "......xx"},
        PasteRow{"OtherSequence", inSingleBytes(U"[202~") + kEnter, "......."},
        PasteRow{"BrokenOff", inSingleBytes(U"[20") + kEnter + inSingleBytes(U"0~") + kEnter,
                 "........."},
        PasteRow{"WithoutEscape",
                 {typedLetter(U'['), typedLetter(U'2'), typedLetter(U'0'), typedLetter(U'0'),
                  typedLetter(U'~')},
                 "....."},
        PasteRow{"EscapeInsideAPaste", kBegin + inSingleBytes(U"") + kEnter + kPasteEnd + kEnter,
                 "xxxx."}),
    rowName<PasteRow>);

TEST(PasteWithoutAnEnd, IsOverWhenNothingHasComeForAWhile) {
  InputGuard guard;
  const auto isPastedAt = [&](Kind kind, double when) {
    return guard.judge({.kind = kind, .came = when}, when) == Verdict::pasted;
  };
  EXPECT_TRUE(isPastedAt(Kind::pasteBegin, 100));
  EXPECT_TRUE(isPastedAt(Kind::enter, 101.9)) << "a slow line";
  EXPECT_TRUE(isPastedAt(Kind::enter, 103.8));
  EXPECT_FALSE(isPastedAt(Kind::enter, 105.9));
  EXPECT_FALSE(isPastedAt(Kind::enter, 106));
}

}  // namespace
