#include "scanner/families.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"
#include "scanner/repeated_scan.h"

namespace {

using ProcessScanner::Families;
using ProcessScanner::FamilyFacts;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kOwnUid = 4000;

using Heads = std::map<std::int32_t, std::int32_t>;

/// The members of families, each with its head.
Heads headsIn(Families& families, const std::vector<FamilyFacts>& processes) {
  families.begin(kOwnUid);
  for (const FamilyFacts& process : processes) families.add(process);
  families.find();
  Heads heads;
  for (const FamilyFacts& process : processes) {
    if (const auto head = families.headOf(process.pid)) heads[process.pid] = *head;
  }
  return heads;
}

FamilyFacts border(std::int32_t pid, std::optional<std::int32_t> parent = std::nullopt) {
  return {.startTime = 1, .parent = parent, .pid = pid, .isBorder = true};
}

FamilyFacts process(std::int32_t pid, std::optional<std::int32_t> parent,
                    LabRole role = LabRole::none, std::uint64_t startTime = 5) {
  return {.startTime = startTime, .parent = parent, .pid = pid, .role = role};
}

FamilyFacts inSession(FamilyFacts facts, std::int32_t session) {
  facts.session = session;
  return facts;
}

struct FamilyRow {
  const char* name;
  std::vector<FamilyFacts> processes;
  Heads heads;
};

class FamilyTree : public testing::TestWithParam<FamilyRow> {};

TEST_P(FamilyTree, IsWhatWasStartedTogether) {
  Families families;
  EXPECT_EQ(headsIn(families, GetParam().processes), GetParam().heads);
  // The same when it is found again.
  EXPECT_EQ(headsIn(families, GetParam().processes), GetParam().heads);
  for (const auto& one : GetParam().processes) {
    EXPECT_EQ(families.leftBehindBy(one.pid), std::nullopt) << one.pid;
  }
}

const FamilyRow kFamilyRows[] = {
    {"Nothing", {}, {}},
    {"Alone", {border(2), process(10, 2)}, {}},
    {"LauncherRanksAndWorkers",
     {border(2), process(10, 2), process(11, 10), process(12, 10), process(13, 11)},
     {{10, 10}, {11, 10}, {12, 10}, {13, 10}}},
    {"InAnyOrder", {process(13, 10), process(10, {})}, {{10, 10}, {13, 10}}},
    {"EachChildOfAShellIsAWorkOfItsOwn",
     {border(2), process(10, 2), process(11, 2), process(12, 11)},
     {{11, 11}, {12, 11}}},
    {"AShellBelowAWorkIsABorder", {process(10, {}), border(11, 10), process(12, 11)}, {}},
    {"WhatTheFirstProcessTakesInIsNotItsOwn", {process(1, 0), process(10, 1), process(11, 1)}, {}},
    {"UnlessItIsAModelServer",
     {process(1, 0, LabRole::inference), process(10, 1), process(11, 10)},
     {{1, 1}, {10, 1}, {11, 1}}},
    {"AnOrphanIsFoundByItsSession",
     {process(1, 0), process(10, 1), inSession(process(11, 1), 10)},
     {{10, 10}, {11, 10}}},
    {"TheSessionOfAShellTellsNothing",
     {process(1, 0), border(2), inSession(process(10, 1), 2), inSession(process(11, 1), 2)},
     {}},
    {"AParentThatIsYoungerHasOnlyGotThePid",
     {process(10, {}, LabRole::none, 9), process(11, 10, LabRole::none, 5)},
     {}},
    {"WhatAnAgentWasToldToTrainIsNoPartOfIt",
     {process(10, {}, LabRole::agent), process(11, 10), process(12, 11, LabRole::training),
      process(13, 11, LabRole::training), process(14, 10)},
     {{10, 10}, {14, 10}, {11, 11}, {12, 11}, {13, 11}}},
    {"WhatAnAgentServesIsPartOfIt",
     {process(10, {}, LabRole::agent), process(11, 10, LabRole::inference)},
     {{10, 10}, {11, 10}}},
    {"WhoStartedVordaIsABorder",
     {process(10, {}), process(11, 10), process(12, 10), process(kOwnUid, 11)},
     {}},
    {"ACircle", {process(10, 11), process(11, 10), process(12, 11)}, {}},
};

INSTANTIATE_TEST_SUITE_P(Table, FamilyTree, testing::ValuesIn(kFamilyRows), rowName<FamilyRow>);

TEST(FamiliesOfADeepChain, AreFoundInOneGo) {
  constexpr int kDeep = 200'000;  // a walk up from each would take minutes
  std::vector<FamilyFacts> chain;
  chain.reserve(kDeep);
  constexpr int kFirst = kOwnUid + 1;
  for (int i = 0; i < kDeep; ++i) chain.push_back(process(kFirst + i, kFirst + i - 1));
  Families families;
  EXPECT_EQ(headsIn(families, chain).at(kFirst + kDeep - 1), kFirst);
}

TEST(LeftBehind, IsWhoWasSeenWithAHeadThatHasEnded) {
  Families families;
  headsIn(families, {process(1, 0), process(10, 1), process(11, 10), process(12, 11)});
  headsIn(families, {process(1, 0), process(11, 1), process(12, 11)});
  EXPECT_EQ(families.leftBehindBy(11), 10);
  EXPECT_EQ(families.leftBehindBy(12), 10) << "it belonged to the same work";
  EXPECT_EQ(families.headOf(12), 11);
  headsIn(families, {process(1, 0), process(11, 1)});
  EXPECT_EQ(families.leftBehindBy(11), 10) << "that does not change";
}

TEST(LeftBehind, IsWhoHasLostItsParentAlone) {
  Families families;
  headsIn(families, {process(10, {}), process(11, 10), process(12, 11)});
  headsIn(families, {process(10, {}), process(12, 1)});
  EXPECT_EQ(families.leftBehindBy(12), 11);
  EXPECT_EQ(families.leftBehindBy(10), std::nullopt);
}

TEST(LeftBehind, IsWhoseHeadsPidIsAnothersNow) {
  Families families;
  headsIn(families, {process(10, {}), process(11, 10)});
  headsIn(families, {process(10, {}, LabRole::none, 9), process(11, 1)});
  EXPECT_EQ(families.leftBehindBy(11), 10);
  EXPECT_EQ(families.leftBehindBy(10), std::nullopt);
}

TEST(LeftBehind, IsNobodyOfWhomThatWasNotSeen) {
  Families families;
  headsIn(families, {border(2), process(10, 2), process(11, {})});
  headsIn(families, {process(10, 1), process(11, 1)});
  EXPECT_EQ(families.leftBehindBy(10), std::nullopt) << "a shell has ended";
  EXPECT_EQ(families.leftBehindBy(11), std::nullopt);

  headsIn(families, {process(20, {}), process(21, 20, LabRole::none, 6)});
  headsIn(families, {process(21, 1, LabRole::none, 7)});
  EXPECT_EQ(families.leftBehindBy(21), std::nullopt) << "another process with its pid";
}

class FamiliesInAScan : public testing::Test {
 protected:
  FamiliesInAScan() { resetMachine(); }

  const std::vector<VordaProcess>& scanned() {
    scan_.scan(50, {}, processes_);
    return processes_;
  }
  static ScriptedProcess started(std::int32_t pid, std::int32_t parent,
                                 std::vector<std::string> arguments, double footprintMB) {
    return {.pid = pid,
            .arguments = std::move(arguments),
            .footprintMB = footprintMB,
            .identity = static_cast<std::uint64_t>(pid),
            .parent = parent};
  }
  std::vector<std::int32_t> unlisted() const {
    std::vector<std::int32_t> pids;
    for (const auto& process : scan_.unlistedMembers()) pids.push_back(process.pid);
    return pids;
  }

  ProcessScanner::RepeatedScan scan_;
  std::vector<VordaProcess> processes_;
};

TEST_F(FamiliesInAScan, StandInTheRecords) {
  machine().processes = {started(2, 1, {"bash"}, 5), started(10, 2, {"torchrun", "train.py"}, 90),
                         started(11, 10, {"python3", "train.py"}, 900),
                         started(12, 11, {"helper", "--x"}, 3), started(13, 2, {"blender"}, 400)};
  for (int round = 0; round < 3; ++round) {
    for (const VordaProcess& process : scanned()) {
      EXPECT_EQ(process.family, process.pid == 13 ? std::nullopt : std::optional(10))
          << process.pid;
    }
    ASSERT_THAT(unlisted(), ElementsAre(12)) << "a member is known though it is small";
    const VordaProcess& helper = scan_.unlistedMembers().front();
    EXPECT_EQ(helper.displayName, "helper");
    EXPECT_EQ(helper.memMB, 3);
    EXPECT_EQ(helper.identity, 12U);
    EXPECT_EQ(helper.family, 10);
  }
  machine().commandLinesRead = 0;
  scanned();
  EXPECT_EQ(machine().commandLinesRead, 0) << "nothing is read twice";

  std::erase_if(machine().processes, [](const auto& one) { return one.pid == 10; });
  machine().find(11)->parent = 1;
  for (const VordaProcess& process : scanned()) {
    EXPECT_EQ(process.leftBehindBy, process.pid == 13 ? std::nullopt : std::optional(10));
  }
  EXPECT_THAT(unlisted(), ElementsAre(12));
  std::erase_if(machine().processes, [](const auto& one) { return one.pid == 11; });
  scanned();
  EXPECT_THAT(unlisted(), IsEmpty()) << "of a family that is not listed nobody is";
}

TEST_F(FamiliesInAScan, TellNothingOfOthersOrdinaryProcesses) {
  machine().processes = {started(10, 1, {"torchrun", "train.py"}, 90),
                         started(11, 10, {"helper"}, 3)};
  machine().find(11)->effectiveUid = 0;
  scanned();
  EXPECT_THAT(unlisted(), IsEmpty());
}

TEST_F(FamiliesInAScan, KeepsNoOneWhoChangesWhileItIsRead) {
  machine().processes = {started(10, 1, {"torchrun", "train.py"}, 90),
                         started(11, 10, {"helper"}, 3), started(12, 10, {"helper"}, 3)};
  machine().beforeConfirm = [](std::int32_t pid) {
    if (pid == 11) machine().find(11)->identity = 99;
  };
  scanned();
  EXPECT_THAT(unlisted(), ElementsAre(12));
}

}  // namespace
