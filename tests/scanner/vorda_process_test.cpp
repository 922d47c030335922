#include "scanner/vorda_process.h"

#include <gtest/gtest.h>

#include <functional>

#include "fakes/row_name.h"

namespace {

VordaProcess sample() {
  return {7,          "Ollama Server", "Ollama", 512.5, 0, "ollama serve", LabRole::inference,
          {"ollama"}, false,           "ada"};
}

struct VordaProcessRow {
  const char* name;
  void (*change)(VordaProcess&);
};

class VordaProcessFields : public testing::TestWithParam<VordaProcessRow> {};

TEST_P(VordaProcessFields, EachCountsForEqualityAndHash) {
  VordaProcess changed = sample();
  GetParam().change(changed);
  EXPECT_NE(changed, sample());
  EXPECT_NE(std::hash<VordaProcess>{}(changed), std::hash<VordaProcess>{}(sample()));
}

constexpr VordaProcessRow kVordaProcessRows[] = {
    {"pid", [](VordaProcess& p) { p.pid = 8; }},
    {"displayName", [](VordaProcess& p) { p.displayName = "Ollama"; }},
    {"product", [](VordaProcess& p) { p.product = ""; }},
    {"memMB", [](VordaProcess& p) { p.memMB = 512.25; }},
    {"cpu", [](VordaProcess& p) { p.cpu = 1; }},
    {"commandLine", [](VordaProcess& p) { p.commandLine = "ollama"; }},
    {"labRole", [](VordaProcess& p) { p.labRole = LabRole::none; }},
    {"matchedAgents", [](VordaProcess& p) { p.matchedAgents.clear(); }},
    {"matchedAgentsOrder",
     [](VordaProcess& p) {
       p.matchedAgents = {"ollama", ""};
     }},
    {"isProtected", [](VordaProcess& p) { p.isProtected = true; }},
    {"ownerName", [](VordaProcess& p) { p.ownerName = "grace"; }},
};

INSTANTIATE_TEST_SUITE_P(Table, VordaProcessFields, testing::ValuesIn(kVordaProcessRows),
                         rowName<VordaProcessRow>);

TEST(VordaProcess, EqualValuesHashEqually) {
  EXPECT_EQ(sample(), sample());
  EXPECT_EQ(std::hash<VordaProcess>{}(sample()), std::hash<VordaProcess>{}(sample()));
}

TEST(VordaProcess, IsTheSameProcessWhenItsMemoryMoved) {
  VordaProcess later = sample();
  later.memMB = 900;
  EXPECT_NE(later, sample());
  EXPECT_EQ(later.id(), sample().id());
}

TEST(VordaProcess, NegativeZeroEqualsAndHashesAsZero) {
  VordaProcess positive = sample();
  VordaProcess negative = sample();
  positive.memMB = positive.cpu = 0.0;
  negative.memMB = negative.cpu = -0.0;
  EXPECT_EQ(positive, negative);
  EXPECT_EQ(std::hash<VordaProcess>{}(positive), std::hash<VordaProcess>{}(negative));
}

}  // namespace
