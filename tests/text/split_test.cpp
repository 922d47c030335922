#include "text/split.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace {

struct CutRow {
  std::string_view text;
  std::string_view taken;
  std::string_view rest;
};

TEST(TakeUntil, CutsOffOnePartAndTheSeparator) {
  constexpr CutRow kRows[] = {
      {"", "", ""},
      {",", "", ""},
      {"a", "a", ""},
      {"a,", "a", ""},
      {",a", "", "a"},
      {"a,b", "a", "b"},
      {"a,,b", "a", ",b"},
      {",,", "", ","},
      {"ab,c,d", "ab", "c,d"},
      {"a b;c", "a b;c", ""},
      {"\xFF,\xFE", "\xFF", "\xFE"},
  };
  for (const auto& row : kRows) {
    std::string_view rest = row.text;
    EXPECT_EQ(text::takeUntil(',', rest), row.taken) << row.text;
    EXPECT_EQ(rest, row.rest) << row.text;
  }
}

TEST(PartsOf, LeavesOutWhatIsEmpty) {
  using Parts = std::vector<std::string_view>;
  EXPECT_EQ(text::partsOf("", ':'), Parts{});
  EXPECT_EQ(text::partsOf("::", ':'), Parts{});
  EXPECT_EQ(text::partsOf("/usr/bin", ':'), Parts{"/usr/bin"});
  EXPECT_EQ(text::partsOf(":/a::b:/c:", ':'), (Parts{"/a", "b", "/c"}));
  EXPECT_EQ(text::partsOf("a:b c", ' '), (Parts{"a:b", "c"}));
}

TEST(HoldsPart, ComparesWholeParts) {
  struct Row {
    std::string_view list;
    bool holds;
  };
  constexpr Row kRows[] = {
      {"", false},       {"KDE", true},        {"ubuntu:KDE", true}, {"KDE:ubuntu", true},
      {"a:KDE:b", true}, {":KDE:", true},      {"KDE5", false},      {"XKDE", false},
      {"kde", false},    {"KDE,GNOME", false},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(text::holdsPart(row.list, ':', "KDE"), row.holds) << row.list;
}

}  // namespace
