// vorda-gpu, the real program, with doubles of the driver's library.
#include "platform/linux/gpu_helper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>

#include "fakes/row_name.h"
#include "platform/processes.h"
#include "tools/forked.h"
#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

namespace {

using namespace std::chrono_literals;
using platform::GpuDevice;
using platform::GpuHelper;
using platform::GpuUse;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto kLong = 3600s;
constexpr std::uint64_t kGibibyte = 1ULL << 30;

std::string libraryOf(const std::string& version) {
  return std::string(NVML_DOUBLES) + "/" + version + "/libnvidia-ml.so.1";
}

/// "4711 on 0: 36864 MiB", in the order that they were told.
std::vector<std::string> words(const std::vector<GpuUse>& uses) {
  std::vector<std::string> words;
  words.reserve(uses.size());
  for (const GpuUse& use : uses) {
    words.push_back(std::to_string(use.pid) + " on " + std::to_string(use.device) + ": " +
                    std::to_string(use.bytes >> 20) + " MiB");
  }
  return words;
}

class Helper : public testing::Test {
 protected:
  /// Those that were ended and not reaped yet.
  ~Helper() override {
    while (waitpid(-1, nullptr, 0) > 0) continue;
  }

  static GpuHelper::Options options(std::chrono::milliseconds patience = 60s,
                                    std::chrono::seconds rest = kLong) {
    return {.program = VORDA_GPU, .patience = patience, .rest = rest};
  }

  void behave(const std::string& how) {
    behaviour_.emplace("NVML_DOUBLE", (how + " log=" + (folder_ / "log").string()).c_str());
  }

  static std::optional<GpuHelper::Heard> answerOf(GpuHelper& helper, const std::string& version,
                                                  bool once = false) {
    helper.ask(libraryOf(version), once);
    return answerTo(helper);
  }
  static std::optional<GpuHelper::Heard> answerTo(GpuHelper& helper) {
    while (helper.isAsked()) {
      helper.await();
      if (auto heard = helper.hear()) return heard;
    }
    return std::nullopt;
  }

  std::string log() const {
    std::ifstream file(folder_ / "log");
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// The process that the double was loaded by; waits for it.
  pid_t helperPid() const {
    for (int i = 0; i < 60'000; ++i) {
      const std::string text = log();
      if (text.starts_with("init ") && text.find('\n') != std::string::npos) {
        return std::stoi(text.substr(5));
      }
      std::this_thread::sleep_for(1ms);
    }
    return 0;
  }

  /// Waits until there is no such process, but perhaps as a zombie of somebody else's.
  static bool isGone(pid_t pid) {
    for (int i = 0; i < 60'000; ++i) {
      const auto state = platform::processState(pid);
      if (!state || state == platform::ProcessState::ended) return true;
      std::this_thread::sleep_for(1ms);
    }
    return false;
  }

  static bool hasNoChild() { return waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD; }

 private:
  TempFolder folder_;
  std::optional<ScopedVariable> behaviour_;
};

struct AnswerRow {
  const char* name;
  const char* version;
  const char* behaviour;
  std::vector<std::string> uses;
};

class HelperAnswers : public Helper, public testing::WithParamInterface<AnswerRow> {};

TEST_P(HelperAnswers, WhatTheDriverTells) {
  behave(GetParam().behaviour);
  GpuHelper helper(options());
  const auto before = platform::processClock();
  const auto heard = answerOf(helper, GetParam().version);
  ASSERT_TRUE(heard);
  EXPECT_FALSE(heard->answer.error);
  EXPECT_EQ(words(heard->answer.uses), GetParam().uses);
  EXPECT_GE(heard->askedAt, before);
  EXPECT_LE(heard->askedAt, platform::processClock());
}

const std::vector<std::string> kUsual{"4711 on 0: 36864 MiB", "4713 on 0: 512 MiB"};

INSTANTIATE_TEST_SUITE_P(
    Table, HelperAnswers,
    testing::Values(
        AnswerRow{"Version1", "v1", "", kUsual}, AnswerRow{"Version2", "v2", "", kUsual},
        AnswerRow{"Version3", "v3", "", kUsual},
        AnswerRow{"LongRecordsOfVersion3", "long_records", "", kUsual},
        AnswerRow{"ShortRecordsWithProtectedMemory", "details", "", kUsual},
        AnswerRow{"WithoutLists", "few", "", {}}, AnswerRow{"ListsThatGrow", "v3", "grows", kUsual},
        AnswerRow{"PidsThatCannotBe", "v3", "wrong", kUsual},
        AnswerRow{"TwoCards",
                  "v3",
                  "cards=2",
                  {"4711 on 0: 36864 MiB", "4713 on 0: 512 MiB", "4711 on 1: 2048 MiB"}},
        AnswerRow{"ACardThatWasLost", "v3", "cards=2 lost=0", {"4711 on 0: 2048 MiB"}},
        AnswerRow{"NoList", "v3", "processes=3", {}},
        AnswerRow{"OneListRefused", "v3", "graphics=4", {"4711 on 0: 36864 MiB"}},
        AnswerRow{"UnifiedMemory", "v3", "unified", kUsual},
        AnswerRow{"DividedCard", "v3", "mig", {"4711 on 0: 12288 MiB", "4712 on 0: 1024 MiB"}},
        AnswerRow{"DividedCardWhosePartsAloneTell", "v3", "mig=closed", {"4711 on 0: 2048 MiB"}}),
    rowName<AnswerRow>);

struct CardRow {
  const char* name;
  const char* version;
  const char* behaviour;
  std::vector<GpuDevice> cards;
};

class HelperCards : public Helper, public testing::WithParamInterface<CardRow> {};

TEST_P(HelperCards, AreTold) {
  behave(GetParam().behaviour);
  GpuHelper helper(options());
  const auto heard = answerOf(helper, GetParam().version);
  ASSERT_TRUE(heard);
  EXPECT_EQ(heard->answer.devices, GetParam().cards);
}

const platform::GpuCapacity kUsualCapacity{80 * kGibibyte, 38 * kGibibyte};
const GpuDevice kFirst{"0000:65:00.0", "NVIDIA H100", kUsualCapacity};
const GpuDevice kSecond{"0000:66:00.0", "NVIDIA H100", kUsualCapacity};

INSTANTIATE_TEST_SUITE_P(
    Table, HelperCards,
    testing::Values(
        CardRow{"Version1", "v1", "", {kFirst}}, CardRow{"Version3", "v3", "", {kFirst}},
        CardRow{"Two", "v3", "cards=2", {kFirst, kSecond}}, CardRow{"None", "v3", "cards=0", {}},
        CardRow{"WithoutAPlace", "few", "", {{"nvidia0", "", kUsualCapacity}}},
        CardRow{"ACardThatWasLost", "v3", "cards=2 lost=0", {kSecond}},
        CardRow{"HandleRefused", "v3", "handle=15", {}},
        CardRow{"UnifiedMemory", "v3", "unified", {{"0000:65:00.0", "NVIDIA H100", {}}}},
        CardRow{"MemoryNotSupported", "v3", "memory=3", {{"0000:65:00.0", "NVIDIA H100", {}}}},
        CardRow{"DividedCardWhosePartsAloneTell",
                "v3",
                "mig=closed",
                {{"0000:65:00.0", "NVIDIA H100",
                  platform::GpuCapacity{20 * kGibibyte, 20 * kGibibyte}}}}),
    rowName<CardRow>);

class HelperErrors : public Helper, public testing::WithParamInterface<int> {};

TEST_P(HelperErrors, OfTheDriverAreTold) {
  for (const char* function : {"init", "count"}) {
    behave(std::string(function) + "=" + std::to_string(GetParam()));
    GpuHelper helper(options());
    const auto heard = answerOf(helper, "v3");
    ASSERT_TRUE(heard) << function;
    EXPECT_EQ(heard->answer.error, GetParam()) << function;
    EXPECT_THAT(heard->answer.devices, IsEmpty());
    // And the driver is left alone.
    helper.ask(libraryOf("v3"), false);
    EXPECT_FALSE(helper.isAsked());
  }
}

TEST_P(HelperErrors, OfOneCardKeepNothingElseFromBeingTold) {
  for (const char* function : {"memory", "processes", "graphics", "handle"}) {
    behave(std::string(function) + "=" + std::to_string(GetParam()));
    GpuHelper helper(options());
    const auto heard = answerOf(helper, "v3");
    ASSERT_TRUE(heard) << function;
    EXPECT_FALSE(heard->answer.error) << function;
  }
}

INSTANTIATE_TEST_SUITE_P(EveryCode, HelperErrors,
                         testing::Values(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17,
                                         18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 999));

TEST_F(Helper, SaysThatThereIsNoSuchLibrary) {
  GpuHelper helper(options());
  helper.ask("/nonexistent/libnvidia-ml.so.1", false);
  const auto heard = answerTo(helper);
  ASSERT_TRUE(heard);
  EXPECT_EQ(heard->answer.error, -1);
}

TEST_F(Helper, SaysThatALibraryIsAnother) {
  behave("");
  GpuHelper helper(options());
  const auto heard = answerOf(helper, "without_init");
  ASSERT_TRUE(heard);
  EXPECT_EQ(heard->answer.error, -1);
}

TEST_F(Helper, HoldsOnToTheDriverUnlessItIsToldOtherwise) {
  behave("");
  GpuHelper helper(options());
  ASSERT_TRUE(answerOf(helper, "v3"));
  ASSERT_TRUE(answerOf(helper, "v3"));
  EXPECT_THAT(log(), testing::Not(HasSubstr("shutdown")));
  ASSERT_TRUE(answerOf(helper, "v3", true));
  const std::string pid = std::to_string(helperPid());
  EXPECT_EQ(log(), "init " + pid + "\nshutdown\n");
  ASSERT_TRUE(answerOf(helper, "v3", true));
  EXPECT_EQ(log(), "init " + pid + "\nshutdown\ninit " + pid + "\nshutdown\n");
}

TEST_F(Helper, IsNotStartedBeforeItIsAsked) {
  const GpuHelper helper(options());
  EXPECT_TRUE(hasNoChild());
}

TEST_F(Helper, IsNotStartedWithoutALibrary) {
  GpuHelper helper(options());
  helper.ask("", false);
  EXPECT_FALSE(helper.isAsked());
  EXPECT_TRUE(hasNoChild());
}

TEST_F(Helper, MayBeMissing) {
  GpuHelper helper({.program = "/nonexistent/vorda-gpu"});
  helper.ask(libraryOf("v3"), false);
  EXPECT_FALSE(helper.isAsked());
  EXPECT_FALSE(helper.hear());
  EXPECT_TRUE(hasNoChild());
}

class HelperFailures : public Helper, public testing::WithParamInterface<const char*> {};

TEST_P(HelperFailures, LeaveTheDriverAloneForAWhile) {
  behave(std::string("crash=") + GetParam());
  GpuHelper helper(options());
  EXPECT_FALSE(answerOf(helper, "v3"));
  helper.ask(libraryOf("v3"), false);
  EXPECT_FALSE(helper.isAsked());
}

TEST_P(HelperFailures, AreOverWhenTheDriverAnswersAgain) {
  behave(std::string("crash=") + GetParam());
  GpuHelper helper(options(60s, 0s));
  EXPECT_FALSE(answerOf(helper, "v3"));
  behave("");
  EXPECT_TRUE(answerOf(helper, "v3"));
}

TEST_P(HelperFailures, LeaveNoProcess) {
  behave(std::string("hang=") + GetParam());
  GpuHelper helper(options(1ms));
  EXPECT_FALSE(answerOf(helper, "v3"));
  const auto isReaped = [&] {
    helper.hear();
    return hasNoChild();
  };
  for (int i = 0; i < 60'000 && !isReaped(); ++i) std::this_thread::sleep_for(1ms);
  EXPECT_TRUE(hasNoChild());
}

INSTANTIATE_TEST_SUITE_P(Where, HelperFailures, testing::Values("load", "init", "processes"),
                         [](const auto& row) { return std::string(row.param); });

TEST_F(Helper, IsNotWaitedFor) {
  behave("hang=init");
  GpuHelper helper(options(kLong));
  const auto start = GpuHelper::Clock::now();
  helper.ask(libraryOf("v3"), false);
  for (int i = 0; i < 1000; ++i) EXPECT_FALSE(helper.hear());
  EXPECT_TRUE(helper.isAsked());
  // An hour is what waiting would have taken.
  EXPECT_LT(GpuHelper::Clock::now() - start, 60s);
}

TEST_F(Helper, EndsAtOnceThoughTheDriverHangs) {
  behave("hang=init");
  pid_t pid = 0;
  {
    GpuHelper helper(options(kLong));
    helper.ask(libraryOf("v3"), false);
    pid = helperPid();
    ASSERT_GT(pid, 0);
  }
  const auto reap = [] { return waitpid(-1, nullptr, WNOHANG); };
  for (int i = 0; i < 60'000 && kill(pid, 0) == 0; ++i) {
    reap();
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_NE(kill(pid, 0), 0);
}

TEST_F(Helper, EndsWithAProgramThatIsKilledThoughTheDriverHangs) {
  behave("hang=init");
  EXPECT_EQ(resultOfForked([this] {
              GpuHelper helper(options(kLong));
              helper.ask(libraryOf("v3"), false);
              const bool hangs = helperPid() > 0;
              if (hangs) raise(SIGKILL);
              return 1;
            }),
            -1);
  const pid_t pid = helperPid();
  ASSERT_GT(pid, 0);
  EXPECT_TRUE(isGone(pid));
}

TEST_F(Helper, EndsWhenItIsAskedNoMore) {
  behave("");
  GpuHelper helper(options());
  ASSERT_TRUE(answerOf(helper, "v3"));
  const pid_t pid = helperPid();
  helper.end();
  for (int i = 0; i < 60'000 && kill(pid, 0) == 0; ++i) {
    helper.hear();
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_TRUE(hasNoChild());
  // And starts anew when it is asked again.
  EXPECT_TRUE(answerOf(helper, "v3"));
}

TEST_F(Helper, GivesUpOnADriverThatHangsByItself) {
  // Where the double hangs it blocks the alarm; a driver whose own call takes long doesn't.
  behave("slow=init");
  GpuHelper helper(options(kLong));
  EXPECT_FALSE(answerOf(helper, "v3"));
}

}  // namespace
