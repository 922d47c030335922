#include "launch_agents/vorda_launch_agent.h"

#include <gtest/gtest.h>

#include <functional>

#include "fakes/row_name.h"

namespace {

VordaLaunchAgent sample() {
  return {"ollama", "/units/ollama.service", "ollama serve", true, true, 7};
}

struct VordaLaunchAgentRow {
  const char* name;
  void (*change)(VordaLaunchAgent&);
};

class VordaLaunchAgentFields : public testing::TestWithParam<VordaLaunchAgentRow> {};

TEST_P(VordaLaunchAgentFields, EachCountsForEqualityAndHash) {
  VordaLaunchAgent changed = sample();
  GetParam().change(changed);
  EXPECT_NE(changed, sample());
  EXPECT_NE(std::hash<VordaLaunchAgent>{}(changed), std::hash<VordaLaunchAgent>{}(sample()));
}

constexpr VordaLaunchAgentRow kVordaLaunchAgentRows[] = {
    {"label", [](VordaLaunchAgent& a) { a.label = "other"; }},
    {"plistPath", [](VordaLaunchAgent& a) { a.plistPath = ""; }},
    {"program", [](VordaLaunchAgent& a) { a.program = "ollama"; }},
    {"keepAlive", [](VordaLaunchAgent& a) { a.keepAlive = false; }},
    {"loaded", [](VordaLaunchAgent& a) { a.loaded = false; }},
    {"pid", [](VordaLaunchAgent& a) { a.pid = 8; }},
    {"absentPid", [](VordaLaunchAgent& a) { a.pid.reset(); }},
};

INSTANTIATE_TEST_SUITE_P(Table, VordaLaunchAgentFields, testing::ValuesIn(kVordaLaunchAgentRows),
                         rowName<VordaLaunchAgentRow>);

TEST(VordaLaunchAgent, IsIdentifiedByItsLabel) {
  EXPECT_EQ(sample().id(), "ollama");
}

TEST(VordaLaunchAgent, EqualValuesHashEqually) {
  EXPECT_EQ(sample(), sample());
  EXPECT_EQ(std::hash<VordaLaunchAgent>{}(sample()), std::hash<VordaLaunchAgent>{}(sample()));
}

TEST(VordaLaunchAgent, IsTheSameWheneverItsPidWasAskedFor) {
  VordaLaunchAgent later = sample();
  later.pidAskedAt = 9;
  EXPECT_EQ(later, sample());
  EXPECT_EQ(std::hash<VordaLaunchAgent>{}(later), std::hash<VordaLaunchAgent>{}(sample()));
}

struct RunRow {
  const char* name;
  std::int32_t pid;
  std::optional<std::uint64_t> startTime;
  std::uint64_t askedAt;
  bool runs;
};

class VordaLaunchAgentRuns : public testing::TestWithParam<RunRow> {};

TEST_P(VordaLaunchAgentRuns, AsAProcessThatWasThereWhenItWasAskedFor) {
  VordaLaunchAgent launchAgent = sample();  // pid 7
  launchAgent.pidAskedAt = GetParam().askedAt;
  EXPECT_EQ(launchAgent.runsAs(GetParam().pid, GetParam().startTime), GetParam().runs);
}

INSTANTIATE_TEST_SUITE_P(Table, VordaLaunchAgentRuns,
                         testing::Values(RunRow{"Older", 7, 99, 100, true},
                                         RunRow{"AsOld", 7, 100, 100, true},
                                         RunRow{"Younger", 7, 101, 100, false},
                                         RunRow{"OfUnknownAge", 7, {}, 100, false},
                                         RunRow{"OfAnotherPid", 8, 99, 100, false}),
                         rowName<RunRow>);

TEST(VordaLaunchAgent, ThatDoesNotRunIsNoProcess) {
  VordaLaunchAgent launchAgent = sample();
  launchAgent.pid.reset();
  launchAgent.pidAskedAt = 100;
  EXPECT_FALSE(launchAgent.runsAs(0, 1));
}

}  // namespace
