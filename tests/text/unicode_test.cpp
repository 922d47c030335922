#include "text/unicode.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace {

constexpr const char* kFamily = "👩‍👩‍👧";  // three emoji joined by U+200D
constexpr const char* kFlag = "🇩🇪";                    // two regional indicators
constexpr const char* kAccent = "e\xCC\x81";           // e and a combining acute

TEST(Lowered, IsUnicodesScalarByScalar) {
  struct UnicodeRow {
    const char* text;
    const char* lower;
  };
  constexpr UnicodeRow kUnicodeRows[] = {
      {"", ""},         {"LoRA 8B", "lora 8b"}, {"ÄÖÜ", "äöü"}, {"ΣΑΣ", "σασ"},
      {"İ", "i"},       {"\u212A", "k"},        {"ß", "ß"},     {"ＱＷＥＮ", "ｑｗｅｎ"},
      {"@[`{", "@[`{"},
  };
  for (const auto& row : kUnicodeRows) EXPECT_EQ(text::lowered(row.text), row.lower) << row.text;
}

TEST(Lowered, PassesOnBytesThatAreNotUtf8) {
  EXPECT_EQ(text::lowered("A\xFF\xC3(B"), "a\xFF\xC3(b");
  EXPECT_EQ(text::lowered("Z\xE2\x82"), "z\xE2\x82");
}

TEST(Lowered, LowersEveryAsciiByteAtEveryPlace) {
  for (std::size_t size = 1; size < 20; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      for (int byte = 0; byte < 0x80; ++byte) {
        const bool isCapital = byte >= 'A' && byte <= 'Z';
        std::string text(size, '@');
        std::string lower = text;
        text[place] = static_cast<char>(byte);
        lower[place] = static_cast<char>(isCapital ? byte + 0x20 : byte);
        ASSERT_EQ(text::lowered(text), lower);
        ASSERT_EQ(text::lowered(std::string(text).append("Ä").append(text)),
                  std::string(lower).append("ä").append(lower));
      }
    }
  }
}

TEST(Lowered, AppendsToWhatIsThere) {
  std::string out = "X ";
  text::appendLowered("Y", out);
  EXPECT_EQ(out, "X y");
}

TEST(WithBytesOutsideUtf8Replaced, KeepsAllOthersInTheirPlaces) {
  EXPECT_EQ(text::withBytesOutsideUtf8Replaced("a\xFFé\xE2\x80 b\xC3", '?'), "a?é?? b?");
  EXPECT_EQ(text::withBytesOutsideUtf8Replaced("👩\xED\xA0\x80", '?'), "👩???");
  EXPECT_EQ(text::withBytesOutsideUtf8Replaced("", '?'), "");
}

TEST(CharacterCount, CountsWhatAReaderSees) {
  EXPECT_EQ(text::characterCount(""), 0U);
  EXPECT_EQ(text::characterCount("abc"), 3U);
  EXPECT_EQ(text::characterCount(kFamily), 1U);
  EXPECT_EQ(text::characterCount(kFlag), 1U);
  EXPECT_EQ(text::characterCount(kAccent), 1U);
  EXPECT_EQ(text::characterCount("\r\n"), 1U);
  EXPECT_EQ(text::characterCount("각한글"), 3U);
  EXPECT_EQ(text::characterCount("a\xFF\xFE"), 3U);
  EXPECT_EQ(text::characterCount("🇩🇪\xFF🇩🇪"), 3U) << "a bad byte ends what came before";
}

TEST(FirstCharacters, NeverSplitsACharacter) {
  const std::string text = std::string(kFamily) + kAccent + "x";
  EXPECT_EQ(text::firstCharacters(text, 0), "");
  EXPECT_EQ(text::firstCharacters(text, 1), kFamily);
  EXPECT_EQ(text::firstCharacters(text, 2), std::string(kFamily) + kAccent);
  EXPECT_EQ(text::firstCharacters(text, 3), text);
  EXPECT_EQ(text::firstCharacters(text, 99), text);
}

TEST(Shortened, CutsOnlyWhatIsLongerThanTheLimit) {
  EXPECT_EQ(text::shortened("12345", 5, 3), "12345");
  EXPECT_EQ(text::shortened("123456", 5, 3), "123…");
  EXPECT_EQ(text::shortened("", 5, 3), "");
  EXPECT_EQ(text::shortened(std::string(kFamily) + "12345", 5, 1), std::string(kFamily) + "…");
}

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
  for (const auto bytes : kWellFormed) EXPECT_TRUE(text::isUtf8(bytes)) << bytes;
  for (const auto bytes : kIllFormed) {
    EXPECT_FALSE(text::isUtf8(bytes)) << testing::PrintToString(bytes);
  }
}

TEST(Utf8, RepairsOnlyWhatIsIllFormed) {
  for (const auto bytes : kWellFormed) EXPECT_EQ(text::repairedUtf8(bytes), bytes);
  EXPECT_EQ(text::repairedUtf8("caf\xe9 日\xff"), "caf\uFFFD 日\uFFFD");
  for (const auto bytes : kIllFormed) {
    EXPECT_TRUE(text::isUtf8(text::repairedUtf8(bytes))) << testing::PrintToString(bytes);
  }
}

}  // namespace
