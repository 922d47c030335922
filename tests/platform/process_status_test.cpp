#include "platform/linux/process_status.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

using Bytes = std::optional<std::uint64_t>;

struct FileRow {
  const char* name;
  const char* text;
  Bytes value;
};

class ResidentFootprint : public testing::TestWithParam<FileRow> {};

TEST_P(ResidentFootprint, IsResidentWithoutShared) {
  EXPECT_EQ(platform::residentFootprint(GetParam().text, 4096), GetParam().value);
}

constexpr FileRow kStatmRows[] = {
    {"AnOrdinaryProcess", "5000 1300 300 20 0 700 0\n", 1000 * 4096},
    {"AKernelThread", "0 0 0 0 0 0 0\n", 0},
    {"CountsReadAtDifferentTimes", "5000 300 301 20 0 700 0\n", 0},
    {"MoreThanFourGigabytes", "99999999 50000000 0 0 0 0 0\n", 204800000000},
    {"Empty", "", std::nullopt},
    {"CutShort", "5000 1300", std::nullopt},
    {"Garbage", "a b c", std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Table, ResidentFootprint, testing::ValuesIn(kStatmRows), rowName<FileRow>);

class FootprintWithSwap : public testing::TestWithParam<FileRow> {};

TEST_P(FootprintWithSwap, IsAnonymousAndSwappedMemory) {
  EXPECT_EQ(platform::footprintWithSwap(GetParam().text), GetParam().value);
}

constexpr FileRow kStatusRows[] = {
    {"InRamAndSwap",
     "Name:\tollama\nVmRSS:\t    9000 kB\nRssAnon:\t    1000 kB\nRssFile:\t    7000 kB\n"
     "RssShmem:\t    1000 kB\nVmSwap:\t     500 kB\n",
     1500 * 1024},
    {"AKernelWithoutSwap", "VmRSS:\t 9 kB\nRssAnon:\t 4 kB\n", 4 * 1024},
    {"AKernelWithoutTheSplit", "VmRSS:\t 9 kB\nVmSwap:\t 3 kB\n", 9 * 1024},
    {"AKernelThread", "Name:\tkthreadd\nThreads:\t1\n", std::nullopt},
    {"ANameThatLooksLikeALine", "Name:\tRssAnon: 5 kB\nVmRSS:\t 9 kB\n", 9 * 1024},
    {"Empty", "", std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Table, FootprintWithSwap, testing::ValuesIn(kStatusRows),
                         rowName<FileRow>);

struct StatRow {
  const char* name;
  const char* text;
  std::optional<platform::ProcessStat> stat;
};

class ProcessStatText : public testing::TestWithParam<StatRow> {};

TEST_P(ProcessStatText, TellsWhereAProcessComesFrom) {
  const auto stat = platform::processStat(GetParam().text);
  const auto& expected = GetParam().stat;
  ASSERT_EQ(stat.has_value(), expected.has_value());
  if (!stat) return;
  EXPECT_EQ(stat->state, expected->state);
  EXPECT_EQ(stat->parent, expected->parent);
  EXPECT_EQ(stat->isKernelThread, expected->isKernelThread);
  EXPECT_EQ(stat->threads, expected->threads);
  EXPECT_EQ(stat->startTicks, expected->startTicks);
  EXPECT_EQ(stat->session, expected->session);
}

const StatRow kStatRows[] = {
    {"AnOrdinaryProcess",
     "812 (bash) S 800 812 811 34816 812 4194304 1 2 3 4 5 6 7 8 20 0 1 0 12345 9 9 9\n",
     {{12345, 800, 811, 1, 'S', false}}},
    {"ANameWithBlanksAndParentheses",
     "812 (a) b (c) S) S 800 812 812 34816 812 4194304 1 2 3 4 5 6 7 8 20 0 4 0 777 9 9 9\n",
     {{777, 800, 812, 4, 'S', false}}},
    {"AKernelThread",
     "2 (kthreadd) S 0 0 0 0 -1 2129984 0 0 0 0 0 0 0 0 20 0 1 0 0 0 0\n",
     {{0, 0, 0, 1, 'S', true}}},
    {"AZombie",
     "9 (sh) Z 8 9 9 0 -1 4227084 0 0 0 0 0 0 0 0 20 0 2 0 42 0 0\n",
     {{42, 8, 9, 2, 'Z', false}}},
    {"NegativeFieldsBefore",
     "1 (x) S 0 -1 -1 0 -1 0 0 0 0 0 0 0 0 0 20 -5 1 0 42 9\n",
     {{42, 0, 0, 1, 'S', false}}},
    {"Empty", "", std::nullopt},
    {"NoName", "812 bash S 800 812", std::nullopt},
    {"CutBehindTheName", "812 (bash) ", std::nullopt},
    {"CutBeforeTheStart", "812 (bash) S 800 812 812", std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Table, ProcessStatText, testing::ValuesIn(kStatRows), rowName<StatRow>);

struct StateRow {
  const char* name;
  char state;
  int threads;
  platform::ProcessState expected;
};

class ProcessStates : public testing::TestWithParam<StateRow> {};

TEST_P(ProcessStates, TellWhetherARequestIsTaken) {
  EXPECT_EQ(platform::stateOf({.threads = GetParam().threads, .state = GetParam().state}),
            GetParam().expected);
}

using platform::ProcessState;

INSTANTIATE_TEST_SUITE_P(Table, ProcessStates,
                         testing::Values(StateRow{"Running", 'R', 1, ProcessState::runs},
                                         StateRow{"Sleeping", 'S', 1, ProcessState::runs},
                                         StateRow{"WaitingForADisk", 'D', 1, ProcessState::runs},
                                         StateRow{"Stopped", 'T', 3, ProcessState::stopped},
                                         StateRow{"Traced", 't', 1, ProcessState::stopped},
                                         StateRow{"Zombie", 'Z', 1, ProcessState::ended},
                                         StateRow{"ZombieAmongThreads", 'Z', 2, ProcessState::runs},
                                         StateRow{"Dead", 'X', 0, ProcessState::ended},
                                         StateRow{"Unknown", '?', 1, ProcessState::runs}),
                         rowName<StateRow>);

}  // namespace
