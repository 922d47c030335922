// What curses sends, and what is on the screen then.
#include "end_to_end/screen_model.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct ScreenRow {
  const char* name;
  const char* bytes;
  const char* picture;  ///< of a screen of 4 columns and 4 rows that held "1", "2", "3", "4"
};

class Screen : public testing::TestWithParam<ScreenRow> {};

TEST_P(Screen, Shows) {
  ScreenModel screen(4, 4);
  screen.feed("1\r\n2\r\n3\r\n4");
  for (const char byte : std::string_view(GetParam().bytes)) screen.feed({&byte, 1});
  EXPECT_EQ(screen.picture(), GetParam().picture);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Screen,
    testing::Values(
        ScreenRow{"Move", "\033[2;3Hx", "1\n2 x\n3\n4\n"},
        ScreenRow{"EraseToTheEnd", "\033[2;1H\033[K", "1\n\n3\n4\n"},
        ScreenRow{"ScrollAll", "\033[4;1H\n", "2\n3\n4\n\n"},
        ScreenRow{"ScrollARegion", "\033[2;3r\033[3;1H\n\033[r", "1\n3\n\n4\n"},
        ScreenRow{"ScrollARegionDown", "\033[2;3r\033[2;1H\033M\033[r", "1\n\n2\n4\n"},
        ScreenRow{"ARegionMovesTheCursor", "\033[3;2H\033[2;3rx", "x\n2\n3\n4\n"},
        ScreenRow{"ACursorIsKept", "\033[3;1H\0337\033[2;3r\0338\n\033[r", "1\n3\n\n4\n"},
        ScreenRow{"DeleteAndInsertLines", "\033[2;1H\033[M\033[1;1H\033[L", "\n1\n3\n4\n"},
        ScreenRow{"RepeatACharacter", "\033[1;1Hx\033[2b", "xxx\n2\n3\n4\n"}),
    rowName<ScreenRow>);

}  // namespace
