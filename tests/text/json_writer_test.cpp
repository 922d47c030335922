#include "text/json_writer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "fakes/row_name.h"

namespace {

TEST(JsonWriter, SeparatesMembersAndElements) {
  text::JsonWriter json;
  json.beginObject().member("a", 1).key("b").beginArray();
  json.value("x,").value("{").value(true).beginObject().endObject();
  json.endArray().key("c").beginArray().endArray().member("d", false).endObject();
  EXPECT_EQ(json.text(), R"({"a":1,"b":["x,","{",true,{}],"c":[],"d":false})");
}

TEST(JsonWriter, WritesNumbersWhole) {
  text::JsonWriter json;
  json.beginArray().value(std::uint64_t{18446744073709551615U}).value(std::int64_t{-5});
  json.value(0.52)
      .value(2.0)
      .value(std::nan(""))
      .value(-std::numeric_limits<double>::infinity())
      .endArray();
  EXPECT_EQ(json.text(), "[18446744073709551615,-5,0.52,2,null,null]");
}

TEST(JsonWriter, WritesWhatIsNotKnownAsNull) {
  text::JsonWriter json;
  json.beginArray().value(std::optional<int>()).value(std::optional(7)).endArray();
  EXPECT_EQ(json.text(), "[null,7]");
}

struct JsonStringRow {
  const char* name;
  std::string string;
  std::string written;
};

class JsonString : public testing::TestWithParam<JsonStringRow> {};

TEST_P(JsonString, IsAsciiThatSteersNothing) {
  EXPECT_EQ(text::JsonWriter().value(GetParam().string).text(), GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(
    Table, JsonString,
    testing::Values(JsonStringRow{"Empty", "", R"("")"},
                    JsonStringRow{"QuoteAndBackslash", R"(a"b\)", R"("a\"b\\")"},
                    JsonStringRow{"ControlCharacters", "\n\x1B[2J\x7F",
                                  R"("\u000a\u001b[2J\u007f")"},
                    JsonStringRow{"C1Control", "\u009B", R"("\u009b")"},
                    JsonStringRow{"TurnsTextAround", "\u202E", R"("\u202e")"},
                    JsonStringRow{"BeyondTheFirstPlane", "\U0001F512", R"("\ud83d\udd12")"},
                    JsonStringRow{"Nul", std::string("a\0b", 3), R"("a\u0000b")"},
                    JsonStringRow{"NotUtf8", "a\xFFz", R"("a\ufffdz")"}),
    rowName<JsonStringRow>);

}  // namespace
