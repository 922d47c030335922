#include "text/path.h"

#include <gtest/gtest.h>

namespace {

struct Row {
  const char* path;
  const char* last;
};

TEST(LastPathComponent, IsWhatFollowsTheLastSlash) {
  constexpr Row kRows[] = {
      {"", ""},     {"/", "/"},    {"///", "/"},        {"a", "a"},
      {"a/", "a"},  {"a///", "a"}, {"/usr/bin/x", "x"}, {"a/b/", "b"},
      {"//a", "a"}, {"a//b", "b"}, {"a/ ", " "},        {".", "."},
  };
  for (const auto& row : kRows) EXPECT_EQ(text::lastPathComponent(row.path), row.last) << row.path;
}

}  // namespace
