#include "scanner/process_sampling.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/scripted_platform.h"

namespace {

using ProcessScanner::ProcessSampler;
using testing::ElementsAre;
using testing::IsEmpty;

class ProcessSampling : public testing::Test {
 protected:
  ProcessSampling() { resetMachine(); }

  bool sample(std::int32_t pid) { return sampler.look(pid) && sampler.read(); }

  ProcessSampler sampler;
};

TEST_F(ProcessSampling, TellsNameArgumentsLineAndOwner) {
  machine().processes = {{.pid = 7, .arguments = {"/usr/bin/python3", "a b", "c"}}};
  ASSERT_TRUE(sample(7));
  EXPECT_EQ(sampler.name(), "python3");
  EXPECT_THAT(sampler.arguments(), ElementsAre("/usr/bin/python3", "a b", "c"));
  EXPECT_EQ(sampler.commandLine(), "/usr/bin/python3 a b c");
  EXPECT_EQ(sampler.uid(), 1000U);
  EXPECT_EQ(sampler.ownerName(), "ada");
}

TEST_F(ProcessSampling, OfAProcessWithoutArgumentsGoesByItsExecutable) {
  machine().processes = {{.pid = 7, .name = "worker"}};
  ASSERT_TRUE(sample(7));
  EXPECT_EQ(sampler.name(), "worker");
  EXPECT_THAT(sampler.arguments(), IsEmpty());
  EXPECT_EQ(sampler.commandLine(), "");
}

TEST_F(ProcessSampling, OfAProcessWithoutANameGivesNothing) {
  machine().processes = {{.pid = 7}, {.pid = 8, .arguments = {"x"}, .unreadable = true}};
  EXPECT_FALSE(sample(7));
  EXPECT_FALSE(sample(8));
  EXPECT_FALSE(sample(9));
}

TEST_F(ProcessSampling, LeavesNothingOfTheProcessBefore) {
  machine().processes = {{.pid = 7, .arguments = {"a", "b"}, .effectiveUid = 1001},
                         {.pid = 8, .name = "c", .effectiveUid = 0}};
  ASSERT_TRUE(sample(7));
  ASSERT_TRUE(sample(8));
  EXPECT_EQ(sampler.name(), "c");
  EXPECT_THAT(sampler.arguments(), IsEmpty());
  EXPECT_EQ(sampler.ownerName(), "root");
}

TEST_F(ProcessSampling, CountsAnUnknownOwnerAsTheSuperuser) {
  machine().processes = {{.pid = 7, .arguments = {"x"}, .effectiveUid = std::nullopt}};
  ASSERT_TRUE(sample(7));
  EXPECT_EQ(sampler.uid(), 0U);
  EXPECT_EQ(sampler.ownerName(), "root");
}

TEST_F(ProcessSampling, NamesAnOwnerWithoutLoginByNumber) {
  machine().processes = {{.pid = 7, .arguments = {"x"}, .effectiveUid = 4294967294U}};
  ASSERT_TRUE(sample(7));
  EXPECT_EQ(sampler.ownerName(), "uid 4294967294");
}

TEST_F(ProcessSampling, LooksEachOwnerUpOnce) {
  machine().processes = {{.pid = 7, .arguments = {"x"}},
                         {.pid = 8, .arguments = {"y"}},
                         {.pid = 9, .arguments = {"z"}, .effectiveUid = 55}};
  for (const int pid : {7, 8, 9, 9}) {
    ASSERT_TRUE(sample(pid));
    sampler.ownerName();
  }
  EXPECT_EQ(machine().loginNameLookups, 2);
}

TEST_F(ProcessSampling, LooksOwnersUpAnewOnceAMinute) {
  machine().processes = {{.pid = 7, .arguments = {"x"}}};
  constexpr int kScansInTwoMinutes = 24;
  for (int scan = 0; scan < kScansInTwoMinutes; ++scan) {
    sampler.beginScan();
    ASSERT_TRUE(sample(7));
    sampler.ownerName();
  }
  EXPECT_EQ(machine().loginNameLookups, 3);
}

TEST_F(ProcessSampling, MeasuresMemoryInMebibytes) {
  machine().processes = {{.pid = 7, .arguments = {"x"}, .footprintMB = 1.5},
                         {.pid = 8, .arguments = {"x"}, .footprintMB = std::nullopt}};
  ASSERT_TRUE(sample(7));
  EXPECT_EQ(sampler.physicalFootprintMB(), 1.5);
  ASSERT_TRUE(sample(8));
  EXPECT_EQ(sampler.physicalFootprintMB(), 0);
}

}  // namespace
