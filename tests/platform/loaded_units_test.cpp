// Asking which services are loaded, over a real message bus, of a manager that does what a test
// says.
#include "platform/linux/loaded_units.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "tools/scripted_manager.h"

namespace {

using namespace std::chrono_literals;
using platform::LaunchAgentAnswer;
using platform::LaunchAgentFile;
using platform::LoadedLaunchAgents;
using platform::LoadedUnits;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;
using Clock = std::chrono::steady_clock;

constexpr auto kLongRest = 3600s;

std::vector<LaunchAgentFile> files(const std::vector<std::string>& labels) {
  std::vector<LaunchAgentFile> result;
  result.reserve(labels.size());
  for (const auto& label : labels) result.push_back({.label = label, .path = "/nonexistent"});
  return result;
}

class LoadedLaunchAgentsOf : public testing::Test {
 protected:
  void SetUp() override {
    if (!manager_.reason().empty()) GTEST_SKIP() << manager_.reason();
    manager_.setUnit("ollama", {.pid = 7});
  }

  /// One that waits this long, and after that leaves the manager alone for as long.
  LoadedUnits reader(std::chrono::milliseconds budget, std::chrono::seconds rest) const {
    return LoadedUnits({.budget = budget, .rest = rest, .sockets = [sockets = manager_.sockets()] {
                          return sockets;
                        }});
  }
  LoadedUnits patient() const { return reader(60s, kLongRest); }
  LoadedUnits hasty() const { return reader(50ms, kLongRest); }

  /// Reads on, until the late answer is there.
  std::optional<LaunchAgentAnswer> readOn(LoadedUnits& reader) const {
    const auto deadline = Clock::now() + 60s;
    while (Clock::now() < deadline) {
      if (auto answer = reader.read(files_)) return answer;
      std::this_thread::sleep_for(1ms);
    }
    return std::nullopt;
  }

  /// Reads on without an answer, until the manager has been asked so many questions: what a
  /// machine that is busy sends may be late.
  void readUntilAsked(LoadedUnits& reader, std::size_t questions) {
    const auto deadline = Clock::now() + 60s;
    do {
      ASSERT_FALSE(reader.read(files_));
    } while (manager_.calls().size() < questions && Clock::now() < deadline);
  }

  const std::vector<LaunchAgentFile> files_ = files({"ollama"});
  ScriptedManager manager_;
};

TEST_F(LoadedLaunchAgentsOf, AManagerAreWhatItSays) {
  manager_.setUnit("setup", {});
  manager_.setUnit("idle", {.activeState = "inactive"});
  auto reader = patient();
  const auto answer = reader.read(files({"ollama", "setup", "idle", "unknown"}));
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->loaded, (LoadedLaunchAgents{{"ollama", 7}, {"setup", std::nullopt}}));
}

TEST_F(LoadedLaunchAgentsOf, NoFilesAreNotAskedFor) {
  auto reader = patient();
  const auto answer = reader.read({});
  ASSERT_TRUE(answer);
  EXPECT_THAT(answer->loaded, SizeIs(0));
  EXPECT_THAT(manager_.calls(), SizeIs(0));
}

TEST_F(LoadedLaunchAgentsOf, APidIsToldOfTheTimeBeforeItWasAskedFor) {
  auto reader = patient();
  const auto answer = reader.read(files_);
  ASSERT_TRUE(answer);
  EXPECT_GT(answer->askedAt, 0U);
  EXPECT_LE(answer->askedAt, manager_.firstAskedForPid());
}

TEST_F(LoadedLaunchAgentsOf, AllQuestionsHaveOneBudget) {
  const LoadedUnits::Options usual;
  EXPECT_EQ(usual.budget, 300ms);
  EXPECT_EQ(usual.rest, 60s);

  manager_.hold("Get");  // the first question is answered
  auto reader = hasty();
  const auto begin = Clock::now();
  EXPECT_FALSE(reader.read(files_)) << "it has never answered";
  EXPECT_GE(Clock::now() - begin, 50ms);
  EXPECT_LT(Clock::now() - begin, 20s);
}

TEST_F(LoadedLaunchAgentsOf, ASlowManagerIsLeftAlone) {
  manager_.hold();
  auto reader = hasty();
  readUntilAsked(reader, 1);
  const auto asked = manager_.calls();
  EXPECT_THAT(asked, ElementsAre("ListUnitsByPatterns"));
  const auto begin = Clock::now();
  for (int i = 0; i < 1'000; ++i) EXPECT_FALSE(reader.read(files_));
  EXPECT_LT(Clock::now() - begin, 30s) << "nor waited for: that would take 50";
  EXPECT_EQ(manager_.calls(), asked);
}

TEST_F(LoadedLaunchAgentsOf, ASlowManagersLastAnswerStands) {
  auto reader = this->reader(500ms, kLongRest);
  const auto before = readOn(reader);
  ASSERT_TRUE(before);
  manager_.setUnit("ollama", {.pid = 8});
  manager_.hold();
  for (int i = 0; i < 3; ++i) {
    const auto meanwhile = reader.read(files_);
    ASSERT_TRUE(meanwhile);
    EXPECT_EQ(meanwhile->loaded, before->loaded);
    EXPECT_EQ(meanwhile->askedAt, before->askedAt) << "it does not become younger";
  }
}

TEST_F(LoadedLaunchAgentsOf, ALateAnswerIsTakenWhenItHasCome) {
  manager_.hold();
  auto reader = hasty();
  EXPECT_FALSE(reader.read(files_));
  manager_.release();
  const auto late = readOn(reader);
  ASSERT_TRUE(late);
  EXPECT_EQ(late->loaded, (LoadedLaunchAgents{{"ollama", 7}}));
  EXPECT_LE(late->askedAt, manager_.firstAskedForPid());
}

TEST_F(LoadedLaunchAgentsOf, AManagerThatHasRestedIsAskedAnew) {
  manager_.hold();
  auto reader = this->reader(50ms, 0s);
  readUntilAsked(reader, 2);
  EXPECT_THAT(manager_.calls(), Each("ListUnitsByPatterns"));
  manager_.release();
  const auto answer = readOn(reader);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->loaded, (LoadedLaunchAgents{{"ollama", 7}}));
}

TEST_F(LoadedLaunchAgentsOf, AManagerThatHasGoneAreNotKnown) {
  auto reader = patient();
  ASSERT_TRUE(reader.read(files_));
  manager_.disconnect();
  EXPECT_FALSE(reader.read(files_));
}

TEST_F(LoadedLaunchAgentsOf, AManagerThatLeavesWithoutAnAnswerAreNotKnown) {
  manager_.hold("Get");
  auto reader = hasty();
  EXPECT_FALSE(reader.read(files_));
  manager_.disconnect();
  for (int i = 0; i < 50; ++i) {
    ASSERT_FALSE(reader.read(files_));
    std::this_thread::sleep_for(1ms);
  }
}

TEST_F(LoadedLaunchAgentsOf, ABusThatHasGoneAreNotKnown) {
  auto reader = patient();
  ASSERT_TRUE(reader.read(files_));
  ASSERT_EQ(kill(manager_.bus(), SIGKILL), 0);
  EXPECT_FALSE(reader.read(files_));
  EXPECT_FALSE(reader.read(files_));
}

TEST_F(LoadedLaunchAgentsOf, ABusThatStandsStillIsLeftAlone) {
  ASSERT_EQ(kill(manager_.bus(), SIGSTOP), 0);
  auto reader = hasty();
  EXPECT_FALSE(reader.read(files_));
  const auto begin = Clock::now();
  for (int i = 0; i < 1'000; ++i) EXPECT_FALSE(reader.read(files_));
  EXPECT_LT(Clock::now() - begin, 30s);
  ASSERT_EQ(kill(manager_.bus(), SIGCONT), 0);
  EXPECT_TRUE(readOn(reader));
}

TEST_F(LoadedLaunchAgentsOf, AManagerThatTalksNonsenseAreNotKnown) {
  manager_.talkNonsense();
  auto reader = patient();
  EXPECT_FALSE(reader.read(files_));
}

TEST_F(LoadedLaunchAgentsOf, APidThatIsNoneIsNone) {
  manager_.setUnit("ollama", {.pid = 4'294'967'295});
  auto reader = patient();
  const auto answer = reader.read(files_);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->loaded, (LoadedLaunchAgents{{"ollama", std::nullopt}}));
}

TEST_F(LoadedLaunchAgentsOf, AManagerWithVeryManyAreAskedForToABound) {
  constexpr int kMany = 300;
  constexpr int kMostPids = 256;
  std::vector<std::string> labels;
  for (int i = 0; i < kMany; ++i) {
    labels.push_back("unit-" + std::to_string(kMany + i));
    manager_.setUnit(labels.back(), {.pid = 7});
  }
  auto reader = patient();
  const auto answer = reader.read(files(labels));
  ASSERT_TRUE(answer);
  EXPECT_THAT(answer->loaded, SizeIs(kMany)) << "all of them are loaded";
  EXPECT_EQ(std::count_if(answer->loaded.begin(), answer->loaded.end(),
                          [](const auto& entry) { return entry.second.has_value(); }),
            kMostPids);
}

}  // namespace
