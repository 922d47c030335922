#include "text/path.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace {

struct PathRow {
  const char* path;
  const char* last;
};

TEST(LastPathComponent, IsWhatFollowsTheLastSlash) {
  constexpr PathRow kPathRows[] = {
      {"", ""},     {"/", "/"},    {"///", "/"},        {"a", "a"},
      {"a/", "a"},  {"a///", "a"}, {"/usr/bin/x", "x"}, {"a/b/", "b"},
      {"//a", "a"}, {"a//b", "b"}, {"a/ ", " "},        {".", "."},
  };
  for (const auto& row : kPathRows)
    EXPECT_EQ(text::lastPathComponent(row.path), row.last) << row.path;
}

TEST(ColonSeparated, LeavesOutWhatIsEmpty) {
  using Parts = std::vector<std::string_view>;
  EXPECT_EQ(text::colonSeparated(""), Parts{});
  EXPECT_EQ(text::colonSeparated("::"), Parts{});
  EXPECT_EQ(text::colonSeparated("/usr/bin"), Parts{"/usr/bin"});
  EXPECT_EQ(text::colonSeparated(":/a::b:/c:"), (Parts{"/a", "b", "/c"}));
}

}  // namespace
