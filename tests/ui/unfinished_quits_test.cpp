#include "ui/unfinished_quits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "ui/controller_test.h"

namespace {

using platform::ProcessState;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t kSecond = 1'000'000'000;

const std::string kBlenderRuns = "blender is still running (pid 7). Force Quit may end it.";
const std::string kGimpRuns = "gimp is still running (pid 8). Force Quit may end it.";

/// Processes that do not do what they are asked to.
class QuitClock : public ControllerTest {
 protected:
  QuitClock() {
    addProcess(7, "blender", 700).ignoresQuit = true;
    addProcess(8, "gimp", 300).ignoresQuit = true;
  }

  /// Winds both clocks on, in steps.
  void pass(double seconds) {
    constexpr double kStep = 0.125;
    for (; seconds > 0; seconds -= kStep) {
      machine().clock += static_cast<std::uint64_t>(kStep * kSecond);
      frontEnd_.advance(kStep);
    }
  }
  /// A process that was asked to quit comes back with the next sample.
  void quit(std::int32_t pid) {
    openMenu();
    closeMenu();
    choose(pid, Action::quitProcess);
  }
  std::string notice() const { return frontEnd_.notices.empty() ? "" : frontEnd_.notices.back(); }

  /// The lines right above Quit.
  std::vector<std::string> linesAboveQuit(std::int32_t pid) {
    openMenu();
    std::vector<std::string> lines;
    for (const MenuItem& item : row(pid).submenu) {
      if (item.action == Action::quitProcess) break;
      if (item.kind == MenuItem::Kind::separator) {
        lines.clear();
      } else {
        EXPECT_FALSE(item.enabled);
        lines.push_back(item.title);
      }
    }
    closeMenu();
    return lines;
  }
};

TEST_F(QuitClock, SaysAfterThreeSecondsThatAProcessIsStillThere) {
  start();
  quit(7);
  pass(2.875);
  EXPECT_THAT(frontEnd_.notices, IsEmpty());
  pass(0.125);
  EXPECT_THAT(frontEnd_.notices, ElementsAre(kBlenderRuns));
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
}

TEST_F(QuitClock, IsNotStoppedByAnotherQuit) {
  start();
  quit(7);
  pass(1);
  quit(8);
  pass(2);
  EXPECT_THAT(frontEnd_.notices, ElementsAre(kBlenderRuns));
  pass(1);
  EXPECT_THAT(frontEnd_.notices, ElementsAre(kBlenderRuns, kGimpRuns + "\n" + kBlenderRuns));
}

TEST_F(QuitClock, StartsAnewWithASecondRequest) {
  start();
  quit(7);
  pass(2);
  quit(7);
  pass(2.875);
  EXPECT_THAT(frontEnd_.notices, IsEmpty());
  pass(0.125);
  EXPECT_THAT(frontEnd_.notices, ElementsAre(kBlenderRuns));
  quit(7);
  EXPECT_EQ(notice(), "") << "asked once more";
}

TEST_F(QuitClock, EndsWithTheController) {
  start();
  quit(7);
  controller_.reset();
  pass(4);
  EXPECT_THAT(frontEnd_.notices, IsEmpty());
}

struct ChangeRow {
  const char* name;
  std::function<void()> change;  ///< two seconds after the request
  std::string notice;            ///< three seconds after it
};

void becomes(ProcessState state) {
  machine().find(7)->state = state;
}

class QuitClockAfterAChange : public QuitClock, public testing::WithParamInterface<ChangeRow> {};

TEST_P(QuitClockAfterAChange, SaysWhatIsTrueOfThatProcess) {
  start();
  quit(7);
  pass(2);
  GetParam().change();
  pass(1);
  EXPECT_EQ(notice(), GetParam().notice);
}

INSTANTIATE_TEST_SUITE_P(
    Table, QuitClockAfterAChange,
    testing::Values(
        ChangeRow{"None", [] {}, kBlenderRuns},
        ChangeRow{"Gone", [] { machine().processes.erase(machine().processes.begin()); }, ""},
        ChangeRow{"Zombie", [] { becomes(ProcessState::ended); }, ""},
        ChangeRow{"LaterProcessWithTheSamePid", [] { machine().find(7)->identity = 999; }, ""},
        ChangeRow{"IdentityUnknown", [] { machine().find(7)->identity.reset(); }, ""},
        ChangeRow{"Stopped", [] { becomes(ProcessState::stopped); },
                  "blender is stopped (pid 7): it takes the request when it goes on. "
                  "Force Quit may end it."},
        ChangeRow{"NotListedAnyMore", [] { machine().find(7)->footprintMB = 1; }, kBlenderRuns}),
    rowName<ChangeRow>);

TEST_F(QuitClock, FallsSilentWhenTheProcessHasEnded) {
  start();
  quit(7);
  pass(4);
  machine().processes.erase(machine().processes.begin());
  pass(2);
  EXPECT_THAT(frontEnd_.notices, ElementsAre(kBlenderRuns, ""));
}

TEST_F(QuitClock, FallsSilentAfterAMinute) {
  start();
  quit(7);
  pass(59);
  EXPECT_EQ(notice(), kBlenderRuns);
  pass(6);
  EXPECT_EQ(notice(), "");
  EXPECT_THAT(linesAboveQuit(7), ElementsAre("Asked to quit 1 min ago"));
}

TEST_F(QuitClock, SaysThatAStoppedProcessGoesOn) {
  machine().find(7)->state = ProcessState::stopped;
  start();
  quit(7);
  pass(3);
  EXPECT_NE(notice(), kBlenderRuns);
  becomes(ProcessState::runs);
  pass(2);
  EXPECT_EQ(notice(), kBlenderRuns);
}

TEST_F(QuitClock, ForgetsARequestWhenTheProcessIsForced) {
  start();
  quit(7);
  pass(4);
  choose(7, Action::forceProcess);
  EXPECT_EQ(notice(), "");
  addProcess(7, "blender", 700);  // it takes a while to go
  EXPECT_THAT(linesAboveQuit(7), IsEmpty());
}

TEST_F(QuitClock, KeepsARequestWhenForcingWasRefused) {
  start();
  quit(7);
  pass(4);
  frontEnd_.answers = {kAlertFirstButtonReturn + 1};
  choose(7, Action::forceProcess);
  EXPECT_EQ(notice(), kBlenderRuns);
}

TEST_F(QuitClock, DoesNotStartWhereNothingWasSent) {
  machine().find(7)->signalError = EPERM;
  start();
  quit(7);
  pass(4);
  EXPECT_THAT(frontEnd_.notices, IsEmpty());
  EXPECT_THAT(linesAboveQuit(7), IsEmpty());
}

TEST_F(QuitClock, SaysThreeLinesAtMost) {
  for (std::int32_t pid = 1; pid <= 5; ++pid) {
    addProcess(pid, "p" + std::to_string(pid), 100).ignoresQuit = true;
  }
  start();
  for (std::int32_t pid = 1; pid <= 5; ++pid) quit(pid);
  pass(3);
  const auto line = [](int pid) {
    const std::string number = std::to_string(pid);
    return "p" + number + " is still running (pid " + number + "). Force Quit may end it.";
  };
  EXPECT_EQ(notice(), line(5) + "\n" + line(4) + "\n" + line(3));
}

TEST_F(QuitClock, SaysANameInOneShortLine) {
  machine().find(7)->arguments = {"/usr/bin/one\ntwo" + std::string(100, 'x')};
  start();
  quit(7);
  pass(3);
  EXPECT_EQ(notice().find('\n'), std::string::npos);
  EXPECT_LT(notice().size(), 110U);
}

TEST_F(QuitClock, StandsInTheSubmenu) {
  machine().find(8)->parent = 7;
  start();
  EXPECT_THAT(linesAboveQuit(8), IsEmpty());
  quit(8);
  EXPECT_THAT(linesAboveQuit(8), ElementsAre("Asked to quit 0 s ago"));
  pass(4);
  EXPECT_THAT(linesAboveQuit(8), ElementsAre("Asked to quit 4 s ago"));
  EXPECT_THAT(linesAboveQuit(7), ElementsAre("1 other process runs below it"));
  machine().find(8)->state = ProcessState::stopped;
  EXPECT_THAT(
      linesAboveQuit(8),
      ElementsAre("Asked to quit 4 s ago", "It is stopped: it takes the request when it goes on"));
  machine().find(8)->identity = 999;
  EXPECT_THAT(linesAboveQuit(8), IsEmpty());
}

struct AgeRow {
  const char* name;
  std::uint64_t seconds;
  const char* line;
};

class QuitAge : public QuitClock, public testing::WithParamInterface<AgeRow> {};

TEST_P(QuitAge, IsShownInWholeUnits) {
  start();
  quit(7);
  machine().clock += GetParam().seconds * kSecond + kSecond - 1;
  EXPECT_THAT(linesAboveQuit(7), ElementsAre(GetParam().line));
}

INSTANTIATE_TEST_SUITE_P(Table, QuitAge,
                         testing::Values(AgeRow{"None", 0, "Asked to quit 0 s ago"},
                                         AgeRow{"Seconds", 59, "Asked to quit 59 s ago"},
                                         AgeRow{"Minute", 60, "Asked to quit 1 min ago"},
                                         AgeRow{"Minutes", 3599, "Asked to quit 59 min ago"},
                                         AgeRow{"Hour", 3600, "Asked to quit 1 h ago"},
                                         AgeRow{"Days", 360000, "Asked to quit 100 h ago"}),
                         rowName<AgeRow>);

TEST_F(QuitClock, SurvivesAClockThatIsSetBack) {
  start();
  quit(7);
  machine().clock -= kSecond / 2;
  EXPECT_THAT(linesAboveQuit(7), ElementsAre("Asked to quit 0 s ago"));
}

}  // namespace
