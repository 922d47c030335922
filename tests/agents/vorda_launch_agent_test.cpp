#include "agents/vorda_launch_agent.h"

#include <gtest/gtest.h>

#include <functional>

#include "fakes/row_name.h"

namespace {

VordaLaunchAgent sample() {
  return {"ollama", "/units/ollama.service", "ollama serve", true, true, 7};
}

struct Row {
  const char* name;
  void (*change)(VordaLaunchAgent&);
};

class VordaLaunchAgentFields : public testing::TestWithParam<Row> {};

TEST_P(VordaLaunchAgentFields, EachCountsForEqualityAndHash) {
  VordaLaunchAgent changed = sample();
  GetParam().change(changed);
  EXPECT_NE(changed, sample());
  EXPECT_NE(std::hash<VordaLaunchAgent>{}(changed), std::hash<VordaLaunchAgent>{}(sample()));
}

constexpr Row kRows[] = {
    {"label", [](VordaLaunchAgent& a) { a.label = "other"; }},
    {"plistPath", [](VordaLaunchAgent& a) { a.plistPath = ""; }},
    {"program", [](VordaLaunchAgent& a) { a.program = "ollama"; }},
    {"keepAlive", [](VordaLaunchAgent& a) { a.keepAlive = false; }},
    {"loaded", [](VordaLaunchAgent& a) { a.loaded = false; }},
    {"pid", [](VordaLaunchAgent& a) { a.pid = 8; }},
    {"absentPid", [](VordaLaunchAgent& a) { a.pid.reset(); }},
};

INSTANTIATE_TEST_SUITE_P(Table, VordaLaunchAgentFields, testing::ValuesIn(kRows), rowName<Row>);

TEST(VordaLaunchAgent, IsIdentifiedByItsLabel) {
  EXPECT_EQ(sample().id(), "ollama");
}

TEST(VordaLaunchAgent, EqualValuesHashEqually) {
  EXPECT_EQ(sample(), sample());
  EXPECT_EQ(std::hash<VordaLaunchAgent>{}(sample()), std::hash<VordaLaunchAgent>{}(sample()));
}

}  // namespace
