#include "ui/memory_warning_rule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "fakes/row_name.h"

namespace {

using Stalls = platform::MemoryStalls;
constexpr double kMBPerGB = 1024;

VordaProcess holder(std::int32_t pid, double memGB, const char* name = "hog") {
  VordaProcess process{.pid = pid, .displayName = name, .memMB = memGB * kMBPerGB};
  process.identity = static_cast<std::uint64_t>(pid);
  return process;
}

/// A machine whose memory is a function of time, looked at as the program does: every 5 seconds
/// with its processes, and in between when the rule asks for it.
struct Trace {
  double totalGB = 24;
  std::function<double(double)> availableGB = [](double) { return 12.0; };
  std::function<std::optional<Stalls>(double)> stalls = [](double) { return Stalls{}; };
  std::function<std::vector<VordaProcess>(double)> processes = [](double) {
    return std::vector{holder(1, 4)};
  };
  std::function<bool(double)> menuIsOpen = [](double) { return false; };

  struct Warned {
    double time = 0;
    MemoryWarningRule::Warning warning;
  };
  std::vector<Warned> warnings = {};
  int looks = 0;

  /// Until that time; the memory's end is the machine's.
  void run(double seconds) {
    MemoryWarningRule rule;
    double next = 0;
    double refresh = 0;
    for (double time = 0; time <= seconds && availableGB(time) > 0; time = next) {
      ++looks;
      rule.look({time, availableGB(time), totalGB, stalls(time)});
      if (time >= refresh || rule.trouble()) {
        if (time >= refresh) refresh += 5;
        auto warning = rule.sampled(time, processes(time), menuIsOpen(time));
        if (warning) warnings.push_back({time, *std::move(warning)});
      }
      next = std::min(refresh, time + rule.nextLook());
    }
  }
};

/// Falls from `from` by `rate` GB a second, beginning at `start`.
std::function<double(double)> leak(double from, double rate, double start = 0) {
  return [=](double time) { return from - rate * std::max(0.0, time - start); };
}

struct LeakRow {
  const char* name;
  double totalGB;
  double fromGB;
  double rate;
};

class Leak : public testing::TestWithParam<LeakRow> {};

TEST_P(Leak, IsWarnedOfOnceAndBeforeTheEnd) {
  const LeakRow& row = GetParam();
  for (const double start : {0.0, 0.3, 2.5, 4.9, 11.0}) {
    Trace trace{.totalGB = row.totalGB};
    trace.availableGB = leak(row.fromGB, row.rate, start);
    trace.processes = [&](double time) {
      return std::vector{holder(1, 4, "idle"), holder(2, row.rate * std::max(0.0, time - start))};
    };
    trace.run(100'000);
    ASSERT_EQ(trace.warnings.size(), 1U) << start;
    const auto& [time, warning] = trace.warnings.front();
    EXPECT_EQ(warning.trouble, MemoryTrouble::runsOut);
    ASSERT_TRUE(warning.culprit);
    EXPECT_EQ(warning.culprit->process.pid, 2);
    EXPECT_GT(warning.culprit->grownMB, 0);
    EXPECT_GT(trace.availableGB(time), 0);
    EXPECT_LT(trace.availableGB(time), 0.15 * row.totalGB);
    EXPECT_LE(trace.availableGB(time), 60 * row.rate) << "a minute before at most";
  }
}

constexpr LeakRow kLeaks[] = {
    {"AGigabyteASecondOf8", 8, 6.6, 1},       {"AGigabyteASecondOf16", 16, 12, 1},
    {"AGigabyteASecondOf24", 24, 20, 1},      {"AGigabyteASecondOf64", 64, 50, 1},
    {"AGigabyteASecondOf512", 512, 300, 1},   {"FiveGigabytesASecondOf128", 128, 100, 5},
    {"AHundredMegabytesASecond", 24, 6, 0.1}, {"FiveMegabytesASecond", 24, 4, 0.005},
};

INSTANTIATE_TEST_SUITE_P(Table, Leak, testing::ValuesIn(kLeaks), rowName<LeakRow>);

/// Memory is filled at a disk's pace to 80 %, held, and given back.
TEST(MemoryWarningRule, TwentyLoadingsOfModelsThatFitGiveNoWarning) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> part(0, 1);
  for (const double totalGB : {8.0, 24.0, 64.0, 512.0}) {
    for (const double pace : {0.2, 1.0, 3.0, 7.0}) {  // GB a second
      const double usedBefore = (0.1 + 0.3 * part(random)) * totalGB;
      const double size = 0.8 * totalGB - usedBefore;
      const double loading = size / pace;
      const double round = loading + 20;
      Trace trace{.totalGB = totalGB};
      const auto loaded = [&](double time) {
        const double since = std::fmod(time, round);
        return since < round - 5 ? std::min(size, since * pace) : 0;
      };
      const double noise = 0.0002 * totalGB;
      trace.availableGB = [&](double time) {
        return totalGB - usedBefore - loaded(time) - noise * std::sin(7 * time) - noise;
      };
      trace.processes = [&](double time) { return std::vector{holder(1, loaded(time))}; };
      trace.stalls = [&](double time) {  // some, now and then, never for long
        return std::fmod(time, 40) < 10 ? Stalls{25, 6} : Stalls{3, 1};
      };
      trace.run(20 * round);
      EXPECT_TRUE(trace.warnings.empty()) << totalGB << " GB at " << pace;
    }
  }
}

TEST(MemoryWarningRule, LittleMemoryThatStaysIsNoTrouble) {
  Trace trace;
  trace.availableGB = [](double time) { return 1 + 0.02 * std::sin(time); };
  trace.run(3600);
  EXPECT_TRUE(trace.warnings.empty());
  EXPECT_LT(trace.looks, 800) << "looks that often all day long for nothing";
}

TEST(MemoryWarningRule, LooksOftenOnlyWhileMemoryGoesFast) {
  MemoryWarningRule rule;
  rule.look({0, 20, 24});
  EXPECT_EQ(rule.nextLook(), 5);
  rule.look({5, 18, 24});  // 45 seconds are left
  EXPECT_DOUBLE_EQ(rule.nextLook(), 45 / 12.0);
  rule.look({8.75, 0.5, 24});  // an eighth of a second
  EXPECT_EQ(rule.nextLook(), 0.25);
  rule.look({9, 0.5, 24});
  EXPECT_EQ(rule.nextLook(), 5);
}

TEST(MemoryWarningRule, NeedsThreeFallsInARow) {
  MemoryWarningRule rule;
  for (const auto& [time, available] :
       {std::pair{0, 3.4}, {5, 3.0}, {10, 2.6}, {15, 2.7}, {20, 2.3}, {25, 1.9}}) {
    rule.look({static_cast<double>(time), available, 24});
    EXPECT_FALSE(rule.trouble()) << time;
  }
  rule.look({30, 1.5, 24});
  EXPECT_EQ(rule.trouble(), MemoryTrouble::runsOut);
}

TEST(MemoryWarningRule, LooksThatComeTooSoonAreNoFalls) {
  MemoryWarningRule rule;
  rule.look({0, 3, 24});
  for (int i = 1; i < 20; ++i) rule.look({i * 0.01, 3 - i * 0.01, 24});
  EXPECT_FALSE(rule.trouble());
}

TEST(MemoryWarningRule, AMemoryOfAnotherSizeOrALongSleepBeginsAnew) {
  for (const bool sleeps : {true, false}) {
    MemoryWarningRule rule;
    rule.look({0, 3, 24});
    rule.look({5, 2.5, 24});
    rule.look({10, 2, 24});
    rule.look(sleeps ? MemoryWarningRule::Look{100, 0.5, 24}
                     : MemoryWarningRule::Look{15, 1.5, 23});
    EXPECT_FALSE(rule.trouble());
    EXPECT_EQ(rule.nextLook(), 5);
  }
}

struct StallRow {
  const char* name;
  Stalls stalls;
  double seconds;
  bool isWarned;
};

class StallsFor : public testing::TestWithParam<StallRow> {};

TEST_P(StallsFor, AreTrouble) {
  const StallRow& row = GetParam();
  Trace trace;
  trace.stalls = [&row](double time) {
    return time >= 20 && time < 20 + row.seconds ? row.stalls : Stalls{1, 0};
  };
  trace.run(120);
  ASSERT_EQ(trace.warnings.size(), row.isWarned ? 1U : 0U);
  if (!row.isWarned) return;
  EXPECT_EQ(trace.warnings.front().time, 35);
  EXPECT_EQ(trace.warnings.front().warning.trouble, MemoryTrouble::stalls);
}

constexpr StallRow kStalls[] = {
    {"SomeForFifteenSeconds", {20, 0}, 15.1, true}, {"SomeForLess", {20, 0}, 14.9, false},
    {"SomeJustTooFew", {19.99, 4.99}, 60, false},   {"FullForFifteenSeconds", {6, 5}, 15.1, true},
    {"FullForLess", {6, 5}, 14.9, false},
};

INSTANTIATE_TEST_SUITE_P(Table, StallsFor, testing::ValuesIn(kStalls), rowName<StallRow>);

TEST(MemoryWarningRule, WhereStallsAreNotToldTheyAreNone) {
  Trace trace;
  trace.stalls = [](double) { return std::nullopt; };
  trace.run(600);
  EXPECT_TRUE(trace.warnings.empty());
}

TEST(MemoryWarningRule, StallsThatNobodySawForLongBeginAnew) {
  MemoryWarningRule rule;
  rule.look({0, 12, 24, Stalls{50, 0}});
  rule.look({3600, 12, 24, Stalls{50, 0}});
  EXPECT_FALSE(rule.trouble());
  rule.look({3615, 12, 24, Stalls{50, 0}});
  EXPECT_TRUE(rule.trouble());
}

/// Stalls without an end, by whoever `culprit` says.
Trace stalling(const std::function<int(double)>& culprit) {
  Trace trace;
  trace.stalls = [](double) { return Stalls{60, 20}; };
  trace.processes = [culprit](double time) { return std::vector{holder(culprit(time), 4)}; };
  return trace;
}

TEST(MemoryWarningRule, OfOneCulpritWarnsOnceInTenMinutes) {
  Trace trace = stalling([](double) { return 7; });
  trace.run(614);
  EXPECT_EQ(trace.warnings.size(), 1U);
  trace.warnings.clear();
  trace.run(616);
  EXPECT_EQ(trace.warnings.size(), 2U);
}

TEST(MemoryWarningRule, NeverWarnsMoreThanThreeTimesAnHour) {
  Trace trace = stalling([](double time) { return 1 + static_cast<int>(time / 20); });
  trace.run(3600);
  ASSERT_EQ(trace.warnings.size(), 3U);
  EXPECT_LT(trace.warnings.back().time, 100);
  trace.warnings.clear();
  trace.run(3700);
  EXPECT_EQ(trace.warnings.size(), 6U);
}

TEST(MemoryWarningRule, KeepsSilentWhileTheMenuIsOpenAndThenSaysIt) {
  Trace trace = stalling([](double) { return 7; });
  trace.menuIsOpen = [](double time) { return time < 300; };
  trace.run(400);
  ASSERT_EQ(trace.warnings.size(), 1U);
  EXPECT_EQ(trace.warnings.front().time, 300);
}

TEST(MemoryWarningRule, IsOverAMinuteAfterTheTrouble) {
  MemoryWarningRule rule;
  EXPECT_TRUE(rule.isOver(0));
  for (int time = 0; time <= 15; time += 5) {
    rule.look({static_cast<double>(time), 12, 24, Stalls{50, 0}});
  }
  EXPECT_FALSE(rule.isOver(15));
  rule.look({20, 12, 24, Stalls{}});
  EXPECT_FALSE(rule.isOver(74));
  EXPECT_TRUE(rule.isOver(75));
}

/// The culprit after 20 seconds in which 4 GB have gone; `before` and `after` are samples.
MemoryCulprit culpritOf(const std::vector<VordaProcess>& before,
                        const std::vector<VordaProcess>& after) {
  MemoryWarningRule rule;
  rule.look({0, 6, 24, Stalls{50, 0}});
  rule.sampled(0, before, false);
  rule.look({20, 2, 24, Stalls{50, 0}});
  const auto warning = rule.sampled(20, after, false);
  return warning && warning->culprit ? *warning->culprit : MemoryCulprit{};
}

TEST(MemoryCulprit, IsWhoHasGrownAndNotWhoIsLarge) {
  const auto found = culpritOf({holder(1, 9), holder(2, 1)}, {holder(1, 9), holder(2, 4)});
  EXPECT_EQ(found.process, (ProcessReference{2, 2}));
  EXPECT_EQ(found.memMB, 4096);
  EXPECT_EQ(found.grownMB, 3072);
  EXPECT_EQ(found.seconds, 20);
}

TEST(MemoryCulprit, MayBeNewAndMayHaveThePidOfAnother) {
  EXPECT_EQ(culpritOf({holder(1, 9)}, {holder(1, 9), holder(2, 2)}).process.pid, 2);
  VordaProcess other = holder(2, 3);
  other.identity = 99;
  EXPECT_EQ(culpritOf({holder(1, 9), holder(2, 3)}, {holder(1, 9), other}).grownMB, 3072);
}

TEST(MemoryCulprit, IsOnlyTheLargestWhereNobodysGrowthExplainsIt) {
  const auto found = culpritOf({holder(1, 9), holder(2, 1)}, {holder(1, 9), holder(2, 1.9)});
  EXPECT_EQ(found.process.pid, 1);
  EXPECT_EQ(found.grownMB, 0);
}

TEST(MemoryCulprit, OfAFamilyIsWhoHasGrownMostInIt) {
  std::vector<VordaProcess> before{holder(1, 9)};
  std::vector<VordaProcess> after{holder(1, 9.9)};
  for (int pid = 10; pid < 18; ++pid) {
    before.push_back(holder(pid, 1));
    after.push_back(holder(pid, pid == 15 ? 1.4 : 1.3));
    before.back().family = after.back().family = 10;
  }
  EXPECT_EQ(culpritOf(before, after).process.pid, 15);
}

TEST(MemoryCulprit, IsNobodyWhereNobodyIsListed) {
  Trace trace = stalling([](double) { return 0; });
  trace.processes = [](double) { return std::vector<VordaProcess>(); };
  trace.run(300);
  ASSERT_EQ(trace.warnings.size(), 1U);
  EXPECT_FALSE(trace.warnings.front().warning.culprit);
}

}  // namespace
