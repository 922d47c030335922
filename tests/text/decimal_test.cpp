#include "text/decimal.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace {

template <typename Number>
struct NumberRow {
  std::string_view text;
  std::optional<Number> number;
};

TEST(Decimal, IsTheWholeText) {
  constexpr NumberRow<std::uint64_t> kRows[] = {
      {"0", 0},
      {"42", 42},
      {"007", 7},
      {"18446744073709551615", UINT64_MAX},
      {"18446744073709551616", {}},
      {"", {}},
      {"-1", {}},
      {"+1", {}},
      {" 1", {}},
      {"1 ", {}},
      {"1\n", {}},
      {"0x1", {}},
      {"1e3", {}},
      {"a", {}},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(text::decimal<std::uint64_t>(row.text), row.number) << row.text;
}

TEST(Decimal, MayBeNegativeWhereTheTypeHasASign) {
  constexpr NumberRow<std::int32_t> kRows[] = {
      {"0", 0},
      {"-1", -1},
      {"2147483647", INT32_MAX},
      {"-2147483648", INT32_MIN},
      {"2147483648", {}},
      {"-2147483649", {}},
      {"--1", {}},
      {"+-1", {}},
      {"-", {}},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(text::decimal<std::int32_t>(row.text), row.number) << row.text;
}

}  // namespace
