// A real systemd user manager of the test's own, and services that it runs.
#include "platform/launch_agents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "platform/linux/file_descriptor.h"
#include "platform/linux/job_control.h"
#include "platform/linux/loaded_jobs.h"
#include "platform/processes.h"
#include "tools/child_process.h"
#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"
#include "tools/user_manager_rig.h"

namespace {

using namespace std::chrono_literals;
using platform::JobFile;
using platform::LoadedJobs;
using platform::ServiceReply;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::Not;
using testing::SizeIs;

ServiceReply start(const std::string& label) {
  const auto attempts = platform::startAttempts(label, "");
  EXPECT_THAT(attempts, SizeIs(1));
  return attempts.front()();
}

ServiceReply stop(const std::string& label) {
  const auto attempts = platform::stopAttempts(label, "");
  EXPECT_THAT(attempts, SizeIs(1));
  return attempts.front()();
}

LoadedJobs loaded() {
  return platform::loadedJobs(platform::jobFiles());
}

/// The line of a service that plays a process with these arguments.
std::string playing(const std::vector<std::string>& arguments) {
  return execStart(playProcess({}, arguments));
}

class LaunchAgents : public testing::Test {
 protected:
  void SetUp() override {
    if (!rig_.reason().empty()) GTEST_SKIP() << rig_.reason();
  }
  UserManagerRig rig_;
};

TEST_F(LaunchAgents, StartRunAndStop) {
  rig_.addService("ollama",
                  playing({"/usr/bin/ollama", "serve"}) + "\nRestart=always\nRestartSec=10ms");
  rig_.addService("idle", playing({"idle"}));
  EXPECT_THAT(loaded(), IsEmpty());

  const auto started = start("ollama");
  ASSERT_EQ(started.status, 0) << started.errorText;
  const auto jobs = loaded();
  ASSERT_THAT(jobs, Contains(Key("ollama")));
  EXPECT_THAT(jobs, Not(Contains(Key("idle"))));
  const auto pid = jobs.at("ollama");
  ASSERT_TRUE(pid);
  platform::ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(*pid, facts));

  const auto stopped = stop("ollama");
  EXPECT_EQ(stopped.status, 0) << stopped.errorText;
  EXPECT_THAT(loaded(), IsEmpty()) << "what was stopped is not restarted";
  EXPECT_FALSE(platform::readProcess(*pid, facts));
}

TEST_F(LaunchAgents, StartingOneThatRunsChangesNothing) {
  rig_.addService("ollama", playing({"ollama"}));
  ASSERT_EQ(start("ollama").status, 0);
  const auto before = loaded();
  EXPECT_EQ(start("ollama").status, 0);
  EXPECT_EQ(loaded(), before);
}

TEST_F(LaunchAgents, StoppingWhatDoesNotRunCouldNotFindIt) {
  rig_.addService("idle", playing({"idle"}));
  const auto idle = stop("idle");
  EXPECT_NE(idle.status, 0);
  EXPECT_THAT(idle.errorText, HasSubstr("Could not find"));

  ASSERT_EQ(start("idle").status, 0);
  ASSERT_EQ(stop("idle").status, 0);
  // The manager forgets an inactive unit, unless another one speaks of it.
  rig_.addService("busy", playing({"busy"}) + "\n[Unit]\nAfter=idle.service");
  ASSERT_EQ(start("busy").status, 0);
  EXPECT_THAT(stop("idle").errorText, HasSubstr("Could not find"));

  const auto unknown = stop("unknown");
  EXPECT_NE(unknown.status, 0);
  EXPECT_THAT(unknown.errorText, HasSubstr("Could not find"));
}

TEST_F(LaunchAgents, StartingFailsInTheManagersOwnWords) {
  const auto unknown = start("unknown");
  EXPECT_NE(unknown.status, 0);
  EXPECT_THAT(unknown.errorText, HasSubstr("unknown.service"));
  EXPECT_NE(start("no unit/name").status, 0);

  rig_.addService("broken", "Type=exec\nExecStart=/nonexistent");
  const auto broken = start("broken");
  EXPECT_NE(broken.status, 0);
  EXPECT_THAT(broken.errorText, HasSubstr("failed"));
}

TEST_F(LaunchAgents, AFailedOneIsNotLoaded) {
  rig_.addService("broken", "Type=oneshot\nExecStart=/bin/false");
  EXPECT_NE(start("broken").status, 0);
  EXPECT_THAT(loaded(), IsEmpty());
  EXPECT_THAT(stop("broken").errorText, HasSubstr("Could not find"));
}

TEST_F(LaunchAgents, OneWithoutAProcessIsLoadedWithoutAPid) {
  rig_.addService("setup", "Type=oneshot\nRemainAfterExit=yes\nExecStart=/bin/true");
  ASSERT_EQ(start("setup").status, 0);
  const auto jobs = loaded();
  ASSERT_THAT(jobs, Contains(Key("setup")));
  EXPECT_EQ(jobs.at("setup"), std::nullopt);
}

TEST_F(LaunchAgents, AnAliasIsTheUnitThatItLeadsTo) {
  const auto path = rig_.addService("real", playing({"real"}));
  const auto alias = std::filesystem::path(path).replace_filename("alias.service");
  std::filesystem::create_symlink("real.service", alias);
  ASSERT_EQ(start("real").status, 0);
  const auto jobs = loaded();
  ASSERT_THAT(jobs, Contains(Key("alias")));
  EXPECT_TRUE(jobs.at("alias"));
  EXPECT_EQ(jobs.at("alias"), jobs.at("real"));
  EXPECT_EQ(stop("alias").status, 0);
  EXPECT_THAT(loaded(), IsEmpty());
}

TEST_F(LaunchAgents, OneThatIsStillStartingIsLoadedAndNotWaitedForForever) {
  rig_.addService("slow", "Type=notify\n" + playing({"slow"}));
  platform::UserManager manager;
  const auto reply = platform::startJob(manager, "slow", 300ms);
  EXPECT_EQ(reply.status, ETIMEDOUT);
  EXPECT_THAT(loaded(), Contains(Key("slow")));
  EXPECT_EQ(stop("slow").status, 0);
}

TEST_F(LaunchAgents, OnlyTheGivenFilesAreAnswered) {
  rig_.addService("ollama", playing({"ollama"}));
  ASSERT_EQ(start("ollama").status, 0);
  const JobFile other{.label = "other", .path = "/nonexistent/other.service"};
  EXPECT_THAT(platform::loadedJobs({}), IsEmpty());
  EXPECT_THAT(platform::loadedJobs(std::span(&other, 1)), IsEmpty());
}

TEST_F(LaunchAgents, ALostConnectionIsMadeAnew) {
  rig_.addService("ollama", playing({"ollama"}));
  ASSERT_EQ(start("ollama").status, 0);
  ASSERT_THAT(loaded(), SizeIs(1));
  rig_.restart();
  ASSERT_EQ(rig_.reason(), "");
  EXPECT_THAT(loaded(), IsEmpty());
  EXPECT_EQ(start("ollama").status, 0);
  EXPECT_THAT(loaded(), SizeIs(1));
}

TEST_F(LaunchAgents, AManagerThatHangsIsLeftAloneForAWhile) {
  rig_.addService("ollama", playing({"ollama"}));
  ASSERT_EQ(start("ollama").status, 0);
  const auto files = platform::jobFiles();
  platform::UserManager manager;
  platform::LoadedJobsReader patient(manager, 3600s);
  platform::LoadedJobsReader hasty(manager, 0s);
  ASSERT_THAT(patient.read(files), SizeIs(1));

  rig_.pause();
  EXPECT_THAT(patient.read(files), IsEmpty());
  EXPECT_THAT(hasty.read(files), IsEmpty());
  const auto reply = platform::stopJob(manager, "ollama", 100ms);
  EXPECT_EQ(reply.status, ETIMEDOUT);
  EXPECT_THAT(reply.errorText, Not(HasSubstr("Could not find")));
  // A job may take its time, but not the answer that it has begun.
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(platform::startJob(manager, "ollama", 60s).status, ETIMEDOUT);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 30s);
  rig_.resume();

  EXPECT_THAT(patient.read(files), IsEmpty()) << "it is not asked again yet";
  EXPECT_THAT(hasty.read(files), SizeIs(1));
}

/// What a program finds where no manager is; no rig is needed for that.
class WithoutManager : public testing::Test {
 protected:
  /// How long it takes to learn that nothing is loaded.
  std::chrono::steady_clock::duration timeOfNothingLoaded() {
    const JobFile file{.label = "ollama", .path = "/nonexistent/ollama.service"};
    platform::LoadedJobsReader reader(manager_);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(reader.read(std::span(&file, 1)), IsEmpty());
    return std::chrono::steady_clock::now() - begin;
  }

  void expectFailures() {
    const auto stopped = platform::stopJob(manager_, "ollama", 200ms);
    EXPECT_NE(stopped.status, 0);
    EXPECT_THAT(stopped.errorText, Not(IsEmpty()));
    EXPECT_THAT(stopped.errorText, Not(HasSubstr("Could not find")));
    EXPECT_NE(platform::startJob(manager_, "ollama", 200ms).status, 0);
  }

  TempFolder folder_;
  ScopedVariable runtime_{"XDG_RUNTIME_DIR", nullptr};
  ScopedVariable bus_{"DBUS_SESSION_BUS_ADDRESS", nullptr};
  platform::UserManager manager_;
};

TEST_F(WithoutManager, NothingIsLoadedAndNothingCanBeChanged) {
  timeOfNothingLoaded();
  expectFailures();
}

TEST_F(WithoutManager, ARuntimeFolderWithoutABusIsNoManager) {
  const ScopedVariable runtime("XDG_RUNTIME_DIR", folder_.path().c_str());
  timeOfNothingLoaded();
  expectFailures();
}

TEST_F(WithoutManager, AnAddressThatIsNoneIsNoManager) {
  for (const char* address : {"", "nonsense", "unix:path=/nonexistent", "autolaunch:"}) {
    const ScopedVariable bus("DBUS_SESSION_BUS_ADDRESS", address);
    timeOfNothingLoaded();
    expectFailures();
  }
}

/// A socket in `folder` at which somebody listens who never says a word.
platform::FileDescriptor silentSocket(const TempFolder& folder) {
  platform::FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  (folder / "bus").string().copy(address.sun_path, sizeof address.sun_path - 1);
  EXPECT_EQ(bind(listener.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  constexpr int kBacklog = 16;
  EXPECT_EQ(listen(listener.get(), kBacklog), 0);
  return listener;
}

TEST_F(WithoutManager, ABusThatNeverAnswersIsGivenUp) {
  const auto listener = silentSocket(folder_);
  const ScopedVariable runtime("XDG_RUNTIME_DIR", folder_.path().c_str());
  const auto time = timeOfNothingLoaded();
  EXPECT_GE(time, platform::UserBus::kPatience);
  EXPECT_LT(time, 20s) << "sd-bus by itself would wait for 90";
  expectFailures();
}

TEST_F(WithoutManager, ABusThatSaysNonsenseIsNoManager) {
  const auto listener = silentSocket(folder_);
  std::thread nonsense([&listener] {
    for (int i = 0; i < 3; ++i) {
      const platform::FileDescriptor peer(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
      const std::string words(100000, '!');
      send(peer.get(), words.data(), words.size(), MSG_NOSIGNAL);
    }
  });
  const ScopedVariable runtime("XDG_RUNTIME_DIR", folder_.path().c_str());
  timeOfNothingLoaded();
  expectFailures();
  shutdown(listener.get(), SHUT_RDWR);  // whatever it still waits for
  nonsense.join();
}

}  // namespace
