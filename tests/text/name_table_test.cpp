#include "text/name_table.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

TEST(NameTable, FindsWholeNamesAlone) {
  const text::NameTable<int> table({{"vllm", 1}, {"ollama", 2}, {"", 3}, {"vllm-server", 4}});
  for (const auto& [name, value] : {std::pair{"vllm", 1}, {"ollama", 2}, {"", 3}}) {
    ASSERT_NE(table.find(name), nullptr) << name;
    EXPECT_EQ(*table.find(name), value) << name;
  }
  for (const char* const name : {"vll", "vllm-", "a", "z"}) {
    EXPECT_EQ(table.find(name), nullptr) << name;
  }
}

TEST(NameTable, TakesTheFirstOfOneName) {
  const text::NameTable<int> table({{"b", 1}, {"a", 2}, {"b", 3}, {"a", 4}});
  for (const auto& [name, value] : {std::pair{"a", 2}, {"b", 1}}) {
    ASSERT_NE(table.find(name), nullptr) << name;
    EXPECT_EQ(*table.find(name), value) << name;
  }
}

TEST(NameTable, WithoutEntriesFindsNothing) {
  EXPECT_EQ(text::NameTable<int>().find(""), nullptr);
}

}  // namespace
