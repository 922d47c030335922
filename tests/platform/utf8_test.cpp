#include "platform/posix/utf8.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace std::string_view_literals;

constexpr std::array kWellFormed{
    ""sv, "plain"sv, "\0\x7f"sv, "é"sv, "日本"sv, "\U0001F600"sv, "\xf4\x8f\xbf\xbf"sv,
};

constexpr std::array kIllFormed{
    "\x80"sv,              // a continuation alone
    "a\xff"sv,             // never a byte of UTF-8
    "\xc3"sv,              // cut
    "\xe6\x97"sv,          // cut
    "\xc0\xaf"sv,          // longer than needed
    "\xed\xa0\x80"sv,      // a surrogate
    "\xf4\x90\x80\x80"sv,  // above U+10FFFF
    "caf\xe9"sv,           // Latin-1
};

TEST(Utf8, TellsWellFormedBytesFromOthers) {
  for (const auto bytes : kWellFormed) EXPECT_TRUE(platform::isUtf8(bytes)) << bytes;
  for (const auto bytes : kIllFormed) {
    EXPECT_FALSE(platform::isUtf8(bytes)) << testing::PrintToString(bytes);
  }
}

TEST(Utf8, RepairsOnlyWhatIsIllFormed) {
  for (const auto bytes : kWellFormed) EXPECT_EQ(platform::repairedUtf8(bytes), bytes);
  EXPECT_EQ(platform::repairedUtf8("caf\xe9 日\xff"), "caf\uFFFD 日\uFFFD");
  for (const auto bytes : kIllFormed) {
    EXPECT_TRUE(platform::isUtf8(platform::repairedUtf8(bytes))) << testing::PrintToString(bytes);
  }
}

}  // namespace
