// A real systemd user manager of the test's own, and services that it runs.
#include "platform/launch_agents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "platform/linux/file_reader.h"
#include "platform/linux/loaded_units.h"
#include "platform/linux/systemd_operation.h"
#include "platform/processes.h"
#include "tools/child_process.h"
#include "tools/read_process.h"
#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"
#include "tools/user_manager_rig.h"

namespace {

using namespace std::chrono_literals;
using platform::LaunchAgentFile;
using platform::LoadedLaunchAgents;
using platform::ServiceReply;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::Not;
using testing::SizeIs;

/// Looks until it has ended.
ServiceReply end(const platform::ServiceAttempt& attempt) {
  const auto deadline = std::chrono::steady_clock::now() + 60s;
  while (std::chrono::steady_clock::now() < deadline) {
    if (const auto reply = attempt()) return *reply;
    std::this_thread::sleep_for(1ms);
  }
  ADD_FAILURE() << "it goes on";
  return {};
}

ServiceReply end(const std::vector<platform::ServiceAttempt>& attempts) {
  EXPECT_THAT(attempts, SizeIs(1));
  return end(attempts.front());
}

ServiceReply start(const std::string& label) {
  return end(platform::startAttempts(label, ""));
}

ServiceReply stop(const std::string& label) {
  return end(platform::stopAttempts(label, ""));
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
  LoadedLaunchAgents loaded() {
    const auto answer = reader_.read(platform::launchAgentFiles());
    return answer ? answer->loaded : LoadedLaunchAgents{{"nobody could be asked", {}}};
  }

  UserManagerRig rig_;
  /// On a busy machine the usual budget may be too small.
  platform::LoadedUnits reader_{{.budget = 60s}};
};

TEST_F(LaunchAgents, StartRunAndStop) {
  rig_.addService("ollama",
                  playing({"/usr/bin/ollama", "serve"}) + "\nRestart=always\nRestartSec=10ms");
  rig_.addService("idle", playing({"idle"}));
  EXPECT_THAT(loaded(), IsEmpty());

  const auto started = start("ollama");
  ASSERT_EQ(started.status, 0) << started.errorText;
  const auto held = loaded();
  ASSERT_THAT(held, Contains(Key("ollama")));
  EXPECT_THAT(held, Not(Contains(Key("idle"))));
  const auto pid = held.at("ollama");
  ASSERT_TRUE(pid);
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(*pid, facts));

  const auto stopped = stop("ollama");
  EXPECT_EQ(stopped.status, 0) << stopped.errorText;
  EXPECT_THAT(loaded(), IsEmpty()) << "what was stopped is not restarted";
  EXPECT_FALSE(readProcess(*pid, facts));
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
  const auto held = loaded();
  ASSERT_THAT(held, Contains(Key("setup")));
  EXPECT_EQ(held.at("setup"), std::nullopt);
}

TEST_F(LaunchAgents, AnAliasIsTheUnitThatItLeadsTo) {
  const auto path = rig_.addService("real", playing({"real"}));
  const auto alias = std::filesystem::path(path).replace_filename("alias.service");
  std::filesystem::create_symlink("real.service", alias);
  ASSERT_EQ(start("real").status, 0);
  const auto held = loaded();
  ASSERT_THAT(held, Contains(Key("alias")));
  EXPECT_TRUE(held.at("alias"));
  EXPECT_EQ(held.at("alias"), held.at("real"));
  EXPECT_EQ(stop("alias").status, 0);
  EXPECT_THAT(loaded(), IsEmpty());
}

TEST_F(LaunchAgents, OneThatIsStillStartingIsLoadedAndCanBeStopped) {
  rig_.addService("slow", "Type=notify\n" + playing({"slow"}));
  const auto starting = platform::startAttempts("slow", "");
  for (int i = 0; i < 6000 && loaded().empty(); ++i) {
    EXPECT_FALSE(starting.front()());
    std::this_thread::sleep_for(10ms);
  }
  EXPECT_THAT(loaded(), Contains(Key("slow")));
  EXPECT_FALSE(starting.front()()) << "it has not said yet that it is ready";
  EXPECT_EQ(stop("slow").status, 0);
  const auto reply = end(starting);
  EXPECT_NE(reply.status, 0);
  EXPECT_THAT(reply.errorText, HasSubstr("canceled"));
}

TEST_F(LaunchAgents, OneThatTakesItsTimeToStopIsSaidToHaveStoppedWhenItHas) {
  rig_.addService("slow", playing({"slow"}) + "\nExecStop=/bin/sleep 0.5");
  ASSERT_EQ(start("slow").status, 0);
  const auto stopping = platform::stopAttempts("slow", "");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(stopping.front()());
  EXPECT_EQ(end(stopping).status, 0);
  EXPECT_GE(std::chrono::steady_clock::now() - begin, 500ms);
  EXPECT_THAT(loaded(), IsEmpty());
}

TEST_F(LaunchAgents, AreFoundWithoutTheVariables) {
  rig_.addService("ollama", playing({"ollama"}));
  const TempFolder runtime;
  runtime.link(std::to_string(getuid()), std::filesystem::path(getenv("XDG_RUNTIME_DIR")).string());
  const ScopedVariable folder("XDG_RUNTIME_DIR", nullptr);
  const ScopedVariable address("DBUS_SESSION_BUS_ADDRESS", nullptr);
  const auto sockets = [&] { return platform::userBusSockets(runtime.path()); };
  platform::SystemdOperation operation(platform::SystemdOperation::Verb::start, "ollama", sockets);
  EXPECT_EQ(end([&] { return operation.poll(); }).status, 0);
  platform::LoadedUnits reader({.budget = 60s, .sockets = sockets});
  const auto answer = reader.read(platform::launchAgentFiles());
  ASSERT_TRUE(answer);
  EXPECT_THAT(answer->loaded, Contains(Key("ollama")));
}

TEST_F(LaunchAgents, OnlyTheGivenFilesAreAnswered) {
  rig_.addService("ollama", playing({"ollama"}));
  ASSERT_EQ(start("ollama").status, 0);
  const LaunchAgentFile other{.label = "other", .path = "/nonexistent/other.service"};
  const auto none = platform::loadedLaunchAgents({});
  ASSERT_TRUE(none);
  EXPECT_THAT(none->loaded, IsEmpty());
  // A manager that is slow on a busy machine answers a later read.
  auto unknown = platform::loadedLaunchAgents(std::span(&other, 1));
  for (int i = 0; i < 6000 && !unknown; ++i) {
    std::this_thread::sleep_for(10ms);
    unknown = platform::loadedLaunchAgents(std::span(&other, 1));
  }
  ASSERT_TRUE(unknown);
  EXPECT_THAT(unknown->loaded, IsEmpty());
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
  const auto files = platform::launchAgentFiles();
  platform::LoadedUnits patient({.budget = 500ms, .rest = 3600s});
  platform::LoadedUnits late({.budget = 100ms, .rest = 3600s});
  for (int i = 0; i < 6000 && !patient.read(files); ++i) std::this_thread::sleep_for(10ms);
  const auto before = patient.read(files);
  ASSERT_TRUE(before);

  rig_.pause();
  EXPECT_EQ(patient.read(files)->loaded, before->loaded) << "its last answer stands";
  EXPECT_FALSE(late.read(files)) << "it has never answered";
  const auto stopping = platform::stopAttempts("ollama", "");
  for (int i = 0; i < 10; ++i) EXPECT_FALSE(stopping.front()());
  rig_.resume();

  EXPECT_EQ(end(stopping).status, 0);
  for (int i = 0; i < 6000 && !late.read(files); ++i) std::this_thread::sleep_for(10ms);
  EXPECT_TRUE(late.read(files)) << "what it said late is taken";
}

/// What a program finds where no manager is; no rig is needed for that.
class WithoutManager : public testing::Test {
 protected:
  void expectNothingKnown() const {
    const LaunchAgentFile file{.label = "ollama", .path = "/nonexistent/ollama.service"};
    platform::LoadedUnits reader({.budget = 100ms, .sockets = [this] { return sockets(); }});
    EXPECT_FALSE(reader.read(std::span(&file, 1)));
  }
  void expectFailures() const {
    using Verb = platform::SystemdOperation::Verb;
    for (const auto verb : {Verb::stop, Verb::start}) {
      platform::SystemdOperation operation(verb, "ollama", [this] { return sockets(); });
      const auto reply = end([&] { return operation.poll(); });
      EXPECT_NE(reply.status, 0);
      EXPECT_THAT(reply.errorText, Not(IsEmpty()));
      EXPECT_THAT(reply.errorText, Not(HasSubstr("Could not find")));
    }
  }
  std::vector<std::string> sockets() const { return {folder_ / "bus"}; }

  TempFolder folder_;
};

TEST_F(WithoutManager, NothingIsKnownAndNothingCanBeChanged) {
  expectNothingKnown();
  expectFailures();
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

TEST_F(WithoutManager, ABusThatNeverGreetsIsNotWaitedFor) {
  const auto listener = silentSocket(folder_);
  const auto begin = std::chrono::steady_clock::now();
  expectNothingKnown();
  {
    platform::SystemdOperation operation(platform::SystemdOperation::Verb::stop, "ollama",
                                         [this] { return sockets(); });
    for (int i = 0; i < 10; ++i) EXPECT_FALSE(operation.poll());
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 20s) << "sd-bus would wait for 90";
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
  expectNothingKnown();
  expectFailures();
  shutdown(listener.get(), SHUT_RDWR);  // whatever it still waits for
  nonsense.join();
}

}  // namespace
