#include "frontends/terminal/list_cursor.h"

#include <gtest/gtest.h>

#include <functional>

#include "fakes/row_name.h"
#include "frontends/terminal/sample_menu.h"

using terminal::ListCursor;

namespace {

constexpr int kHeight = 4;

/// One letter an item: "o" can be selected, "-" is a separator, "." a label.
std::vector<MenuItem> listOf(const std::string& pattern) {
  std::vector<MenuItem> items;
  for (const char c : pattern) {
    if (c == 'o') items.push_back(SampleMenu::command("o", Action::about));
    if (c == '-') items.push_back(SampleMenu::separator());
    if (c == '.') items.push_back(SampleMenu::label("."));
  }
  return items;
}

using Move = std::function<void(ListCursor&, terminal::Items)>;

const Move kDown = [](auto& cursor, auto items) { cursor.moveDown(items, kHeight); };
const Move kUp = [](auto& cursor, auto items) { cursor.moveUp(items, kHeight); };
const Move kPageDown = [](auto& cursor, auto items) { cursor.pageDown(items, kHeight); };
const Move kPageUp = [](auto& cursor, auto items) { cursor.pageUp(items, kHeight); };
const Move kHome = [](auto& cursor, auto items) { cursor.home(items, kHeight); };
const Move kEnd = [](auto& cursor, auto items) { cursor.end(items, kHeight); };
const Move kWheelDown = [](auto& cursor, auto items) { cursor.scroll(items, 3, kHeight); };
const Move kWheelUp = [](auto& cursor, auto items) { cursor.scroll(items, -3, kHeight); };

struct ListCursorRow {
  const char* name;
  std::string list;
  std::size_t start;
  std::vector<Move> moves;
  std::size_t selected;
  std::size_t top;
};

class ListCursorMoves : public testing::TestWithParam<ListCursorRow> {};

TEST_P(ListCursorMoves, SkipWhatCannotBeSelectedAndKeepTheSelectionInView) {
  const auto items = listOf(GetParam().list);
  ListCursor cursor;
  cursor.select(items, GetParam().start, kHeight);
  for (const auto& move : GetParam().moves) move(cursor, items);
  EXPECT_EQ(cursor.selected(), GetParam().selected);
  EXPECT_EQ(cursor.top(), GetParam().top);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ListCursorMoves,
    testing::Values(
        ListCursorRow{"Down", "ooo", 0, {kDown}, 1, 0},
        ListCursorRow{"DownOverASeparator", "o-.o", 0, {kDown}, 3, 0},
        ListCursorRow{"DownAtTheEndStays", "oo", 1, {kDown}, 1, 0},
        ListCursorRow{"DownScrolls", "oooooo", 3, {kDown}, 4, 1},
        ListCursorRow{"UpOverASeparator", "o-.o", 3, {kUp}, 0, 0},
        ListCursorRow{"UpAtTheStartStays", "oo", 0, {kUp}, 0, 0},
        ListCursorRow{"UpShowsTheHeading", "ooo-.oooo", 8, {kUp, kUp, kUp}, 5, 3},
        ListCursorRow{
            "UpToTheFirstShowsAllAboveIt", "...oooooo", 8, {kUp, kUp, kUp, kUp, kUp}, 3, 0},
        ListCursorRow{"PageDown", "oooooooooo", 0, {kPageDown}, 3, 0},
        ListCursorRow{"PageDownPastTheEnd", "oooooo", 4, {kPageDown}, 5, 2},
        ListCursorRow{"PageDownOntoASeparator", "ooo-.ooo", 0, {kPageDown}, 5, 2},
        ListCursorRow{"PageUp", "oooooooooo", 9, {kPageUp}, 6, 6},
        ListCursorRow{"PageUpPastTheStart", ".ooooo", 2, {kPageUp}, 1, 0},
        ListCursorRow{"Home", ".ooooooo", 7, {kHome}, 1, 0},
        ListCursorRow{"End", "ooooooo", 0, {kEnd}, 6, 3},
        ListCursorRow{"EndShowsLabelsBelow", "oooooo.", 0, {kEnd}, 5, 3},
        ListCursorRow{"WheelLeavesTheSelection", "oooooooooo", 1, {kWheelDown}, 1, 3},
        ListCursorRow{
            "WheelStopsAtTheEnd", "oooooooo", 0, {kWheelDown, kWheelDown, kWheelDown}, 0, 4},
        ListCursorRow{"WheelBack", "oooooooooo", 0, {kWheelDown, kWheelUp, kWheelUp}, 0, 0},
        ListCursorRow{"AKeyAfterTheWheelComesBack", "oooooooooo", 0, {kWheelDown, kDown}, 1, 1}),
    rowName<ListCursorRow>);

TEST(ListCursor, SelectsTheNearestOfWhatIsLeft) {
  const auto items = listOf("oo-.oo");
  ListCursor cursor;
  cursor.selectNearest(items, 2, kHeight);
  EXPECT_EQ(cursor.selected(), 1U);
  cursor.selectNearest(items, 3, kHeight);
  EXPECT_EQ(cursor.selected(), 4U);
  cursor.selectNearest(items, 99, kHeight);
  EXPECT_EQ(cursor.selected(), 5U);
}

TEST(ListCursor, SelectsNothingWhereNothingCanBe) {
  const auto items = listOf("-..");
  ListCursor cursor;
  cursor.selectNearest(items, 0, kHeight);
  cursor.moveDown(items, kHeight);
  cursor.moveUp(items, kHeight);
  EXPECT_EQ(cursor.selected(), std::nullopt);
}

TEST(ListCursor, FollowsItsItemOnlyWhenItWasInView) {
  const auto items = listOf("oooooooooooo");
  ListCursor seen;
  seen.select(items, 1, kHeight);
  seen.follow(items, 9, kHeight);
  EXPECT_EQ(seen.top(), 6U);

  ListCursor scrolledAway;
  scrolledAway.select(items, 0, kHeight);
  scrolledAway.scroll(items, 6, kHeight);
  scrolledAway.follow(items, 1, kHeight);
  EXPECT_EQ(scrolledAway.selected(), 1U);
  EXPECT_EQ(scrolledAway.top(), 6U);
}

}  // namespace
