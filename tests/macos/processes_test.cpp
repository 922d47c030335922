#include "platform/processes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/proc.h>
#include <sys/syslimits.h>

#include "fakes/row_name.h"
#include "macos/mac_test.h"
#include "tools/read_process.h"

namespace {

using darwin::kernel;
using testing::ElementsAre;
using testing::IsEmpty;

class Processes : public MacTest {};

TEST_F(Processes, PidsAreTheKernelsInItsOrder) {
  kernel().processes = {{.pid = 9}, {.pid = 3}, {.pid = 7}};
  EXPECT_THAT(platform::allPids(), ElementsAre(9, 3, 7));
}

TEST_F(Processes, PidsAreAboveZero) {
  kernel().listedPids = {0, 5, -1, 0};
  EXPECT_THAT(platform::allPids(), ElementsAre(5));
}

TEST_F(Processes, MoreThanSixteenPidsAreListed) {
  for (int pid = 1; pid <= 3000; ++pid) kernel().processes.push_back({.pid = pid});
  EXPECT_EQ(platform::allPids().size(), 3000);
}

TEST_F(Processes, RefusedListingGivesNone) {
  kernel().processes = {{.pid = 9}};
  kernel().refusesListing = true;
  EXPECT_THAT(platform::allPids(), IsEmpty());
}

TEST_F(Processes, NoProcessesGiveNone) {
  EXPECT_THAT(platform::allPids(), IsEmpty());
}

TEST_F(Processes, OwnPid) {
  EXPECT_EQ(platform::ownPid(), 4242);
}

TEST_F(Processes, FactsOfAnOwnProcess) {
  kernel().processes = {darwin::process(5, {"/opt/homebrew/bin/ollama", "serve"})};
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_EQ(facts.name, "ollama");
  EXPECT_EQ(facts.commandLine, "/opt/homebrew/bin/ollama serve");
  EXPECT_THAT(facts.arguments, ElementsAre("/opt/homebrew/bin/ollama", "serve"));
  EXPECT_EQ(facts.effectiveUid, darwin::kUser);
}

TEST_F(Processes, FirstArgumentNamesBeforeThePath) {
  kernel().processes = {{.pid = 5,
                         .path = "/usr/bin/python3.12",
                         .argumentBlock = darwin::argumentBlock("/usr/bin/python3", {"trainer"})}};
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_EQ(facts.name, "trainer");
}

TEST_F(Processes, OtherUsersProcessIsNamedByItsPath) {
  kernel().processes = {{.pid = 5, .effectiveUid = 0, .path = "/usr/libexec/ollama"}};
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_EQ(facts.name, "ollama");
  EXPECT_EQ(facts.commandLine, "");
  EXPECT_THAT(facts.arguments, IsEmpty());
  EXPECT_EQ(facts.effectiveUid, 0);
}

TEST_F(Processes, NoArgumentsNameByThePath) {
  kernel().processes = {
      {.pid = 5, .path = "/sbin/tool", .argumentBlock = darwin::argumentBlock("/sbin/tool", {})}};
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_EQ(facts.name, "tool");
}

TEST_F(Processes, FirstArgumentThatIsASlashIsTheName) {
  kernel().processes = {darwin::process(5, {"/"})};
  platform::ProcessFacts facts;
  EXPECT_TRUE(readProcess(5, facts));
  EXPECT_EQ(facts.name, "/");
}

TEST_F(Processes, NeitherArgumentsNorPathGiveNoFacts) {
  kernel().processes = {{.pid = 5}};
  platform::ProcessFacts facts;
  EXPECT_FALSE(readProcess(5, facts));
  EXPECT_FALSE(readProcess(6, facts)) << "gone";
}

TEST_F(Processes, FactsLeaveNothingOfTheProcessBefore) {
  kernel().processes = {darwin::process(5, {"/bin/long", "argument", "list"}),
                        {.pid = 6, .effectiveUid = 0, .path = "/bin/other"}};
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  ASSERT_TRUE(readProcess(6, facts));
  EXPECT_EQ(facts.name, "other");
  EXPECT_EQ(facts.commandLine, "");
  EXPECT_THAT(facts.arguments, IsEmpty());
  EXPECT_EQ(facts.effectiveUid, 0);
}

TEST_F(Processes, PathThatIsNotUtf8IsRepaired) {
  kernel().processes = {{.pid = 5, .path = "/bin/caf\xe9"}};
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_EQ(facts.name, "caf\uFFFD");
}

TEST_F(Processes, RefusedRecordLeavesTheUserUnknown) {
  kernel().processes = {darwin::process(5, {"/bin/tool"})};
  kernel().refusesRecords = true;
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_FALSE(facts.effectiveUid);
}

TEST_F(Processes, BlockThatGrowsMeanwhileIsReadWhileItFits) {
  kernel().processes = {darwin::process(5, {"/bin/tool", "a"})};
  kernel().whenBlockWasMeasured = [](darwin::Process& process) {
    process.argumentBlock = darwin::argumentBlock("/bin/tool", {"/bin/tool", "a", "b"});
  };
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_EQ(facts.commandLine, "/bin/tool a b");
}

// The kernel gives the end of a block that does not fit: that would be the environment.
TEST_F(Processes, BlockThatOutgrowsItsMeasureTellsNothing) {
  kernel().processes = {darwin::process(5, {"/bin/tool", "a"})};
  kernel().whenBlockWasMeasured = [](darwin::Process& process) {
    process.argumentBlock = darwin::argumentBlock(
        "/bin/tool", {"/bin/tool", "a"}, std::vector<std::string>(100, "OPENAI_API_KEY=secret"));
  };
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_EQ(facts.name, "tool");
  EXPECT_EQ(facts.commandLine, "");
}

TEST_F(Processes, OfTheLargestBlockIsReadWhatFits) {
  const std::string path = "/bin/tool";
  const std::size_t padded = darwin::argumentBlock(path, {path, ""}).size();
  const std::string longest(ARG_MAX + sizeof(int) - padded, 'x');
  kernel().processes = {darwin::process(5, {path, longest})};
  ASSERT_EQ(kernel().processes[0].argumentBlock.size(), ARG_MAX + sizeof(int));
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_EQ(facts.commandLine, path);
  EXPECT_TRUE(facts.isCut);
}

struct FootprintRow {
  std::string name;
  std::optional<std::uint64_t> footprint;
  std::optional<std::uint64_t> resident;
  std::optional<std::uint64_t> bytes;
};

class Footprint : public MacTestWith<FootprintRow> {};

TEST_P(Footprint, IsTheKernels) {
  const FootprintRow& row = GetParam();
  kernel().processes = {{.pid = 5, .footprint = row.footprint, .resident = row.resident}};
  EXPECT_EQ(platform::physicalFootprint(5), row.bytes);
}

INSTANTIATE_TEST_SUITE_P(Table, Footprint,
                         testing::Values(FootprintRow{"Footprint", 300, 900, 300},
                                         FootprintRow{"FootprintAlone", 300, {}, 300},
                                         FootprintRow{"ZeroFallsBackToResident", 0, 900, 900},
                                         FootprintRow{"RefusedFallsBackToResident", {}, 900, 900},
                                         FootprintRow{"ResidentMayBeZero", 0, 0, 0},
                                         FootprintRow{"ZeroAndNoResident", 0, {}, {}},
                                         FootprintRow{"BothRefused", {}, {}, {}},
                                         FootprintRow{"Large", 1ULL << 40, {}, 1ULL << 40}),
                         rowName<FootprintRow>);

TEST_F(Processes, FootprintOfAGoneProcessIsUnknown) {
  EXPECT_FALSE(platform::physicalFootprint(5));
}

TEST_F(Processes, IdentityTellsTwoOwnersOfAPidApart) {
  kernel().processes = {{.pid = 5, .startTime = 1'700'000'000'000'001}};
  const auto first = platform::processIdentity(5);
  kernel().processes = {{.pid = 5, .startTime = 1'700'000'000'000'002}};
  const auto second = platform::processIdentity(5);
  ASSERT_TRUE(first && second);
  EXPECT_NE(first, second);
}

TEST_F(Processes, WhatWasReadIsOfOneProcess) {
  kernel().processes = {darwin::process(5, {"/bin/tool"})};
  kernel().processes[0].startTime = 1'700'000'000'000'001;
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_TRUE(platform::confirmProcess(5, facts));
  EXPECT_EQ(facts.identity, platform::processIdentity(5));
  EXPECT_TRUE(facts.identity);

  kernel().processes[0].startTime = 1'700'000'000'000'002;
  EXPECT_FALSE(platform::confirmProcess(5, facts));
  EXPECT_FALSE(facts.identity);
}

TEST_F(Processes, NothingIsConfirmedOfAGoneProcess) {
  kernel().processes = {darwin::process(5, {"/bin/tool"})};
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  kernel().processes.clear();
  EXPECT_FALSE(platform::confirmProcess(5, facts));
}

TEST_F(Processes, WithoutItsRecordItHasNoIdentity) {
  kernel().processes = {darwin::process(5, {"/bin/tool"})};
  kernel().refusesRecords = true;
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(5, facts));
  EXPECT_TRUE(platform::confirmProcess(5, facts));
  EXPECT_FALSE(facts.identity);
}

struct StateRow {
  const char* name;
  char state;
  platform::ProcessState expected;
};

class ProcessStates : public Processes, public testing::WithParamInterface<StateRow> {};

TEST_P(ProcessStates, TellWhetherARequestIsTaken) {
  kernel().processes = {{.pid = 5, .state = GetParam().state}};
  EXPECT_EQ(platform::processState(5), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, ProcessStates,
                         testing::Values(StateRow{"Running", SRUN, platform::ProcessState::runs},
                                         StateRow{"Sleeping", SSLEEP, platform::ProcessState::runs},
                                         StateRow{"Stopped", SSTOP,
                                                  platform::ProcessState::stopped},
                                         StateRow{"Zombie", SZOMB, platform::ProcessState::ended}),
                         rowName<StateRow>);

TEST_F(Processes, StateOfAGoneProcessIsUnknown) {
  EXPECT_FALSE(platform::processState(5));
  kernel().processes = {{.pid = 5}};
  kernel().refusesRecords = true;
  EXPECT_FALSE(platform::processState(5));
}

TEST_F(Processes, IdentityOfAGoneProcessIsUnknown) {
  EXPECT_FALSE(platform::processIdentity(5));
  kernel().processes = {{.pid = 5}};
  kernel().refusesRecords = true;
  EXPECT_FALSE(platform::processIdentity(5));
}

}  // namespace
