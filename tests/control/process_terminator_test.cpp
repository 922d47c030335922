#include "control/process_terminator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Answer = std::pair<bool, std::string>;

constexpr std::int32_t kPid = 312;

const std::string kMacRefusal =
    "macOS refused the signal (@).\n\nPID 312 is protected (root, system service, or SIP).\n\n"
    "For Docker: quit Docker Desktop from the menu bar whale icon.\n"
    "For system daemons: leave them alone — they are not ordinary apps.";
const std::string kLinuxRefusal =
    "Linux refused the signal (@).\n\n"
    "PID 312 is protected (root, system service, or a security policy).\n\n"
    "For Docker: quit Docker Desktop from the system tray whale icon.\n"
    "For system daemons: leave them alone — they are not ordinary apps.";
const std::string kMacRoot =
    "PID 312 runs as root, so macOS blocks Force Quit from a normal app.\n\n"
    "This is common for Docker’s network helper (com.docker.vmnetd).\n\n"
    "What to do instead:\n"
    "• Quit Docker Desktop from its whale menu (menu bar), or\n"
    "• Open Docker Desktop → Quit Docker Desktop\n\n"
    "Vorda cannot send root processes SIGKILL without an admin password prompt.";
const std::string kLinuxRoot =
    "PID 312 runs as root, so Linux blocks Force Quit from a normal app.\n\n"
    "This is common for Docker’s engine (dockerd).\n\n"
    "What to do instead:\n"
    "• Quit Docker Desktop from its whale menu (system tray), or\n"
    "• Stop the service it belongs to (systemctl stop …)\n\n"
    "Vorda cannot send root processes SIGKILL without an admin password prompt.";

std::string with(std::string sentence, int error) {
  return sentence.replace(sentence.find('@'), 1, std::strerror(error));
}

class Terminate : public testing::Test {
 protected:
  Terminate() {
    resetMachine();
    machine().processes = {{.pid = kPid, .effectiveUid = 1000, .identity = 5}};
  }
  static ScriptedProcess& process() { return machine().processes.front(); }
  static void speakMac() { machine().words = platform::kMacWords; }
  static Answer quit() { return ProcessTerminator::terminate(kPid, false); }
  static Answer force() { return ProcessTerminator::terminate(kPid, true); }
};

TEST_F(Terminate, QuitsAProcessOfOnesOwn) {
  EXPECT_EQ(quit(), Answer(true, "Quit PID 312"));
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{kPid, false}));
}

TEST_F(Terminate, ForceQuitsAProcessOfOnesOwn) {
  EXPECT_EQ(force(), Answer(true, "Force-quit PID 312"));
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{kPid, true}));
}

TEST_F(Terminate, WritesALargePidWithoutGrouping) {
  machine().processes = {{.pid = 4194304}};
  EXPECT_EQ(ProcessTerminator::terminate(4194304, false), Answer(true, "Quit PID 4194304"));
}

TEST_F(Terminate, CountsAProcessThatIsGoneAsSuccess) {
  machine().processes.clear();
  EXPECT_EQ(quit(), Answer(true, "PID 312 already gone"));
  EXPECT_EQ(force(), Answer(true, "PID 312 already gone"));
}

TEST_F(Terminate, CountsAProcessThatGoesMeanwhileAsSuccess) {
  process().signalError = ESRCH;
  EXPECT_EQ(quit(), Answer(true, "PID 312 already gone"));
}

TEST_F(Terminate, LetsTheKernelDecideWhenTheOwnerCannotBeTold) {
  process().effectiveUid = std::nullopt;
  EXPECT_EQ(quit(), Answer(true, "Quit PID 312"));
  machine().processes = {{.pid = kPid, .effectiveUid = std::nullopt, .signalError = EPERM}};
  EXPECT_EQ(quit(), Answer(false, with(kLinuxRefusal, EPERM)));
}

struct ErrorRow {
  const char* name;
  int error;
  bool isRefusal;
};

class SignalError : public Terminate, public testing::WithParamInterface<ErrorRow> {};

TEST_P(SignalError, IsExplained) {
  const int error = GetParam().error;
  process().signalError = error;
  const std::string failure = std::string("Failed PID 312: ") + std::strerror(error);
  EXPECT_EQ(quit(), Answer(false, GetParam().isRefusal ? with(kLinuxRefusal, error) : failure));
  speakMac();
  EXPECT_EQ(force(), Answer(false, GetParam().isRefusal ? with(kMacRefusal, error) : failure));
}

INSTANTIATE_TEST_SUITE_P(Table, SignalError,
                         testing::Values(ErrorRow{"NotPermitted", EPERM, true},
                                         ErrorRow{"AccessDenied", EACCES, true},
                                         ErrorRow{"InvalidArgument", EINVAL, false},
                                         ErrorRow{"OutOfMemory", ENOMEM, false}),
                         rowName<ErrorRow>);

TEST_F(Terminate, RefusesAnotherUsersProcess) {
  process().effectiveUid = 1001;
  const Answer refusal(false,
                       "PID 312 is owned by grace, not your account. "
                       "Vorda can only quit your own processes.");
  EXPECT_EQ(quit(), refusal);
  EXPECT_EQ(force(), refusal);
  speakMac();
  EXPECT_EQ(quit(), refusal);
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(Terminate, NamesAnOwnerWithoutAnEntryByNumber) {
  process().effectiveUid = 501;
  EXPECT_EQ(quit(), Answer(false,
                           "PID 312 is owned by uid 501, not your account. "
                           "Vorda can only quit your own processes."));
}

struct RootRow {
  const char* name;
  std::uint32_t uid;
  std::optional<std::string> loginName;
};

class RootsProcess : public Terminate, public testing::WithParamInterface<RootRow> {};

TEST_P(RootsProcess, IsRefusedInTheSameWordsForQuitAndForceQuit) {
  const auto& [name, uid, loginName] = GetParam();
  process().effectiveUid = uid;
  machine().loginNames.erase(uid);
  if (loginName) machine().loginNames[uid] = *loginName;
  EXPECT_EQ(quit(), Answer(false, kLinuxRoot));
  EXPECT_EQ(force(), Answer(false, kLinuxRoot));
  speakMac();
  EXPECT_EQ(quit(), Answer(false, kMacRoot));
  EXPECT_EQ(force(), Answer(false, kMacRoot));
  EXPECT_THAT(machine().signals, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, RootsProcess,
                         testing::Values(RootRow{"Root", 0, "root"},
                                         RootRow{"UidZeroByAnotherName", 0, "toor"},
                                         RootRow{"UidZeroWithoutAnEntry", 0, std::nullopt},
                                         RootRow{"AnotherUidByThatName", 77, "root"}),
                         rowName<RootRow>);

TEST_F(Terminate, LetsRootQuitItsOwn) {
  machine().ownUid = 0;
  process().effectiveUid = 0;
  EXPECT_EQ(quit(), Answer(true, "Quit PID 312"));
}

TEST_F(Terminate, RefusesOthersProcessesToRootToo) {
  machine().ownUid = 0;
  EXPECT_EQ(quit(), Answer(false,
                           "PID 312 is owned by ada, not your account. "
                           "Vorda can only quit your own processes."));
}

struct GroupRow {
  const char* name;
  std::int32_t pid;
};

class ProcessGroup : public Terminate, public testing::WithParamInterface<GroupRow> {};

TEST_P(ProcessGroup, IsNeverSignalled) {
  const std::int32_t pid = GetParam().pid;
  // Were it looked at, it could be signalled.
  machine().processes = {{.pid = pid}};
  int looks = 0;
  machine().beforeSignal = [&looks](std::int32_t) { ++looks; };
  const Answer refusal(false, "Failed PID " + std::to_string(pid) + ": " + std::strerror(EINVAL));
  EXPECT_EQ(ProcessTerminator::terminate(pid, false), refusal);
  EXPECT_EQ(ProcessTerminator::terminate(pid, true), refusal);
  EXPECT_EQ(ProcessTerminator::terminate(pid, true, 5), refusal);
  EXPECT_EQ(looks, 0);
  EXPECT_THAT(machine().signals, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, ProcessGroup,
                         testing::Values(GroupRow{"OnesOwn", 0}, GroupRow{"Everybody", -1},
                                         GroupRow{"Another", -312},
                                         GroupRow{"TheLeast", INT32_MIN}),
                         rowName<GroupRow>);

TEST_F(Terminate, SignalsTheProcessThatWasMeant) {
  EXPECT_EQ(ProcessTerminator::terminate(kPid, true, 5), Answer(true, "Force-quit PID 312"));
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{kPid, true}));
}

TEST_F(Terminate, SendsNothingToALaterProcessWithThePid) {
  for (const bool force : {false, true}) {
    EXPECT_EQ(ProcessTerminator::terminate(kPid, force, 4), Answer(true, "PID 312 already gone"));
  }
  process().effectiveUid = 0;  // that it is root's by now is of no interest either
  EXPECT_EQ(ProcessTerminator::terminate(kPid, true, 4), Answer(true, "PID 312 already gone"));
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(Terminate, SendsNothingWhenItCannotTellWhetherTheProcessIsTheOneThatWasMeant) {
  process().identity = std::nullopt;
  EXPECT_EQ(ProcessTerminator::terminate(kPid, true, 5), Answer(true, "PID 312 already gone"));
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(Terminate, SendsNothingWhenNobodyKnowsWhichProcessWasMeant) {
  for (const bool force : {false, true}) {
    EXPECT_EQ(ProcessTerminator::terminate(kPid, force, std::nullopt),
              Answer(true, "PID 312 already gone"));
  }
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(Terminate, LooksLastWhetherTheProcessIsTheOneThatWasMeant) {
  machine().afterOwner = [](std::int32_t) { process().identity = 6; };
  EXPECT_EQ(ProcessTerminator::terminate(kPid, true, 5), Answer(true, "PID 312 already gone"));
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(Terminate, ExaminesTheProcessAfterItHoldsIt) {
  machine().beforeSignal = [](std::int32_t) { process().identity = 6; };
  EXPECT_EQ(ProcessTerminator::terminate(kPid, true, 5), Answer(true, "PID 312 already gone"));
}

}  // namespace
