#include "platform/macos/launch_agents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "launch_agents/launch_agent_operation.h"
#include "launch_agents/launch_agent_scanner.h"
#include "macos/mac_test.h"
#include "platform/macos/launchctl_attempts.h"
#include "platform/macos/launchctl_inquiry.h"
#include "platform/processes.h"

namespace {

using std::chrono::milliseconds;
using testing::Each;
using testing::ElementsAre;
using Texts = std::vector<std::string>;

/// What a launchctl that hangs is given here.
constexpr milliseconds kMoment(100);

class LaunchAgents : public MacTest {
 protected:
  static std::string userPath(const std::string& name) {
    return Stage::userLaunchAgentsPath() + "/" + name;
  }
  static std::string machinePath(const std::string& name) {
    return std::string(Stage::machineLaunchAgentsPath()) + "/" + name;
  }
  static void writeFile(const std::string& path, const std::string& label) {
    Stage::write(path,
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist "
                 "version=\"1.0\"><dict><key>Label</key><string>" +
                     label + "</string></dict></plist>");
  }
  static Texts paths(std::span<const platform::LaunchAgentFile> files) {
    Texts result;
    for (const auto& file : files) result.push_back(file.path);
    return result;
  }
};

TEST_F(LaunchAgents, FilesOfTheUserComeBeforeTheMachines) {
  writeFile(machinePath("com.a.plist"), "com.a");
  writeFile(userPath("com.z.plist"), "com.z");
  EXPECT_THAT(paths(platform::launchAgentFiles()),
              ElementsAre(userPath("com.z.plist"), machinePath("com.a.plist")));
}

TEST_F(LaunchAgents, LabelInBothFoldersGivesTwo) {
  writeFile(machinePath("com.a.plist"), "com.a");
  writeFile(userPath("com.a.plist"), "com.a");
  EXPECT_EQ(platform::launchAgentFiles().size(), 2);
}

TEST_F(LaunchAgents, OtherFilesAreNone) {
  writeFile(userPath("com.a.plist"), "com.a");
  writeFile(userPath("com.b.PLIST"), "com.b");
  writeFile(userPath("com.c.plist.bak"), "com.c");
  writeFile(userPath("plist"), "com.d");
  writeFile(userPath("below/com.e.plist"), "com.e");
  EXPECT_THAT(paths(platform::launchAgentFiles()), ElementsAre(userPath("com.a.plist")));
}

TEST_F(LaunchAgents, UnreadableFilesAreSkipped) {
  writeFile(userPath("com.a.plist"), "com.a");
  Stage::write(userPath("garbage.plist"), "\xff\xfe");
  Stage::write(userPath("folder.plist/file"), "");
  EXPECT_THAT(paths(platform::launchAgentFiles()), ElementsAre(userPath("com.a.plist")));
}

TEST_F(LaunchAgents, MissingFoldersGiveNone) {
  std::filesystem::remove_all(Stage::userLaunchAgentsPath());
  std::filesystem::remove_all(Stage::machineLaunchAgentsPath());
  EXPECT_TRUE(platform::launchAgentFiles().empty());
}

platform::LoadedLaunchAgents loadedLaunchAgents() {
  const auto* const answer =
      platform::loadedLaunchAgents(std::span<const platform::LaunchAgentFile>());
  return answer ? answer->loaded : platform::LoadedLaunchAgents{{"nobody could be asked", {}}};
}

TEST_F(LaunchAgents, LoadedOnesAreListedOnce) {
  Stage::setLaunchctl("printf 'PID\\tStatus\\tLabel\\n12\\t0\\tcom.a\\n-\\t0\\tcom.b\\n'");
  EXPECT_EQ(loadedLaunchAgents(), (platform::LoadedLaunchAgents{{"com.a", 12}, {"com.b", {}}}));
  EXPECT_EQ(Stage::launchctlCalls(), Texts{"list"});
}

TEST_F(LaunchAgents, PidsAreOfTheTimeBeforeTheyWereAskedFor) {
  Stage::setLaunchctl("sleep 0.2; printf 'PID\\tStatus\\tLabel\\n12\\t0\\tcom.a\\n'");
  constexpr std::uint64_t kSleep = 200'000'000;  // nanoseconds
  const std::uint64_t before = platform::processClock();
  const auto* const answer =
      platform::loadedLaunchAgents(std::span<const platform::LaunchAgentFile>());
  const std::uint64_t after = platform::processClock();
  ASSERT_TRUE(answer);
  EXPECT_GE(answer->askedAt, before);
  EXPECT_LE(answer->askedAt + kSleep, after);
}

TEST_F(LaunchAgents, FailedListTellsNothing) {
  Stage::setLaunchctl("printf 'PID\\tStatus\\tLabel\\n12\\t0\\tcom.a\\n'; exit 1");
  EXPECT_TRUE(loadedLaunchAgents().empty());
  Stage::removeLaunchctl();
  EXPECT_TRUE(loadedLaunchAgents().empty());
}

TEST_F(LaunchAgents, HangingListLeavesTheLastOneForAMinute) {
  constexpr milliseconds kLong = std::chrono::minutes(1);
  const char* const hangs = "printf 'PID\\tStatus\\tLabel\\n12\\t0\\tcom.a\\n'; exec sleep 1000";
  const auto now = platform::Clock::now();
  platform::LaunchctlInquiry inquiry;
  Stage::setLaunchctl(hangs);
  EXPECT_TRUE(inquiry.ask(kMoment, now).loaded.empty());
  inquiry.resume();

  Stage::setLaunchctl("printf 'PID\\tStatus\\tLabel\\n7\\t0\\tcom.b\\n'");
  const auto last = inquiry.ask(kLong, now);
  EXPECT_EQ(last.loaded, (platform::LoadedLaunchAgents{{"com.b", 7}}));
  Stage::setLaunchctl(hangs);
  EXPECT_EQ(inquiry.ask(kMoment, now).loaded, last.loaded);

  Stage::reset();
  const auto kept = inquiry.ask(kLong, now + std::chrono::seconds(59));
  EXPECT_EQ(kept.loaded, last.loaded);
  EXPECT_EQ(kept.askedAt, last.askedAt) << "a younger process is not the one that it names";
  EXPECT_EQ(Stage::launchctlCalls(), Texts{});
  EXPECT_TRUE(inquiry.ask(kLong, now + std::chrono::seconds(60)).loaded.empty());
  EXPECT_EQ(Stage::launchctlCalls(), Texts{"list"});
}

TEST_F(LaunchAgents, FailureIsAnAnswer) {
  platform::LaunchctlInquiry inquiry;
  Stage::setLaunchctl("printf 'PID\\tStatus\\tLabel\\n7\\t0\\tcom.b\\n'");
  EXPECT_EQ(inquiry.ask(std::chrono::minutes(1)).loaded.size(), 1);
  Stage::setLaunchctl("exit 1");
  EXPECT_TRUE(inquiry.ask(std::chrono::minutes(1)).loaded.empty());
  Stage::reset();
  std::ignore = inquiry.ask(std::chrono::minutes(1));
  EXPECT_EQ(Stage::launchctlCalls().size(), 1) << "asked again at once";
}

TEST_F(LaunchAgents, ScanJoinsFilesAndLoadedOnes) {
  writeFile(userPath("one.plist"), "com.example.one");
  writeFile(userPath("two.plist"), "com.ollama.two");
  Stage::setLaunchctl("printf 'PID\\tStatus\\tLabel\\n-\\t0\\tcom.ollama.two\\n'");
  const auto launchAgents = LaunchAgentScanner::scan();
  ASSERT_EQ(launchAgents.size(), 2);
  EXPECT_EQ(launchAgents[0].label, "com.ollama.two");
  EXPECT_TRUE(launchAgents[0].loaded);
  EXPECT_FALSE(launchAgents[0].pid);
  EXPECT_FALSE(launchAgents[1].loaded);
}

VordaLaunchAgent launchAgent() {
  return {.label = "com.a", .plistPath = "/Users/ada/Library/LaunchAgents/a b.plist"};
}

/// At once: nothing goes on in the background.
LaunchAgentOperation::Outcome outcome(LaunchAgentOperation operation) {
  return operation.poll().value_or(LaunchAgentOperation::Outcome{false, "it goes on"});
}

LaunchAgentOperation::Outcome stopped(const VordaLaunchAgent& launchAgent) {
  return outcome({launchAgent, LaunchAgentOperation::Kind::stop});
}

LaunchAgentOperation::Outcome started(const VordaLaunchAgent& launchAgent) {
  return outcome({launchAgent, LaunchAgentOperation::Kind::start});
}

TEST_F(LaunchAgents, BootoutStopsAtTheFirstSuccess) {
  const auto [ok, message] = stopped(launchAgent());
  EXPECT_TRUE(ok);
  EXPECT_EQ(message, "Unloaded com.a");
  EXPECT_THAT(Stage::launchctlCalls(), ElementsAre("bootout|gui/501/com.a"));
}

TEST_F(LaunchAgents, BootoutTriesThreeWays) {
  Stage::setLaunchctl("echo 'Boot-out failed: 5: Input/output error' >&2; exit 5");
  const auto [ok, message] = stopped(launchAgent());
  EXPECT_FALSE(ok);
  EXPECT_EQ(message, "Failed to unload com.a");
  EXPECT_THAT(Stage::launchctlCalls(),
              ElementsAre("bootout|gui/501/com.a",
                          "bootout|gui/501|/Users/ada/Library/LaunchAgents/a b.plist",
                          "unload|/Users/ada/Library/LaunchAgents/a b.plist"));
}

TEST_F(LaunchAgents, BootoutByOldWayCounts) {
  Stage::setLaunchctl("[ \"$1\" = unload ] || exit 5");
  EXPECT_EQ(stopped(launchAgent()), std::pair(true, std::string("Unloaded com.a")));
  EXPECT_EQ(Stage::launchctlCalls().size(), 3);
}

TEST_F(LaunchAgents, BootoutOfWhatIsNotLoadedIsASuccess) {
  for (const char* words : {"No such process", "Could not find"}) {
    Stage::reset();
    Stage::setLaunchctl(std::string("echo 'Boot-out failed: 3: ") + words + " x' >&2; exit 3");
    EXPECT_EQ(stopped(launchAgent()), std::pair(true, std::string("com.a already unloaded")));
    EXPECT_EQ(Stage::launchctlCalls().size(), 1);
  }
}

TEST_F(LaunchAgents, BootoutReadsErrorsAlone) {
  Stage::setLaunchctl("echo 'No such process'; exit 3");
  EXPECT_FALSE(stopped(launchAgent()).first);
}

TEST_F(LaunchAgents, BootstrapTriesTwoWays) {
  Stage::setLaunchctl("echo 'Bootstrap failed: 5: No such process' >&2; exit 5");
  EXPECT_EQ(started(launchAgent()), std::pair(false, std::string("Failed to load com.a")));
  EXPECT_THAT(Stage::launchctlCalls(),
              ElementsAre("bootstrap|gui/501|/Users/ada/Library/LaunchAgents/a b.plist",
                          "load|/Users/ada/Library/LaunchAgents/a b.plist"));
}

TEST_F(LaunchAgents, BootstrapStopsAtTheFirstSuccess) {
  EXPECT_EQ(started(launchAgent()), std::pair(true, std::string("Loaded com.a")));
  EXPECT_EQ(Stage::launchctlCalls().size(), 1);
}

TEST_F(LaunchAgents, DomainIsTheUsersOfTheMoment) {
  darwin::kernel().ownUid = 77;
  stopped(launchAgent());
  darwin::kernel().ownUid = 78;
  started(launchAgent());
  EXPECT_THAT(Stage::launchctlCalls(),
              ElementsAre("bootout|gui/77/com.a",
                          "bootstrap|gui/78|/Users/ada/Library/LaunchAgents/a b.plist"));
}

TEST_F(LaunchAgents, MissingLaunchctlFailsEveryWay) {
  Stage::removeLaunchctl();
  EXPECT_EQ(stopped(launchAgent()).second, "Failed to unload com.a");
  EXPECT_EQ(started(launchAgent()).second, "Failed to load com.a");
}

TEST_F(LaunchAgents, HangingActionFailsEveryWay) {
  Stage::setLaunchctl("exec sleep 1000");
  for (const auto& attempts : {platform::stopAttempts("com.a", "/a.plist", kMoment),
                               platform::startAttempts("/a.plist", kMoment)}) {
    for (const platform::ServiceAttempt& attempt : attempts) {
      EXPECT_EQ(attempt().value().status, -1);
    }
  }
}

TEST_F(LaunchAgents, HangingAttemptLeavesTheOthersNoTime) {
  Stage::setLaunchctl("exec sleep 1000");
  const auto attempts = platform::launchctlAttempts({{"a"}, {"b"}, {"c"}}, kMoment);
  EXPECT_EQ(attempts.at(0)().value().status, -1);
  Stage::removeLaunchctl();  // an attempt to start it would now say that it is missing
  for (const std::size_t later : {1U, 2U}) {
    const platform::ServiceReply reply = attempts[later]().value();
    EXPECT_EQ(reply.status, -1);
    EXPECT_EQ(reply.errorText, "");
  }
  // On a busy machine the first one's time is over before it can write down its call.
  EXPECT_THAT(Stage::launchctlCalls(), Each("a"));
}

}  // namespace
