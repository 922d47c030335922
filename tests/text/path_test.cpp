#include "text/path.h"

#include <gtest/gtest.h>

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

}  // namespace
