#include "ui/alerts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"
#include "launch_agents/vorda_launch_agent.h"
#include "scanner/vorda_process.h"

namespace {

using testing::EndsWith;
using testing::StartsWith;

struct TitleRow {
  const char* name;
  const char* title;
  bool isShown;
};

class Notification : public testing::TestWithParam<TitleRow> {};

TEST_P(Notification, IsShownForFailuresAlone) {
  EXPECT_EQ(Alerts::isShown(GetParam().title), GetParam().isShown);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Notification,
    testing::Values(
        TitleRow{"Failed", "Failed", true}, TitleRow{"CannotForceQuit", "Cannot force quit", true},
        TitleRow{"ProtectedProcess", "Protected process", true},
        TitleRow{"Failure", "Failure", true}, TitleRow{"Protection", "Protection", true},
        TitleRow{"FailInside", "It has FAILed", true},
        TitleRow{"ProtectInside", "unPROTECTED", true}, TitleRow{"CannotInside", "We CANNOT", true},
        TitleRow{"Quit", "Quit", false}, TitleRow{"ForceQuit", "Force Quit", false},
        TitleRow{"Unload", "Unload", false}, TitleRow{"Load", "Load", false},
        TitleRow{"Empty", "", false}, TitleRow{"AlmostFail", "Fai led", false}),
    rowName<TitleRow>);

struct ButtonsRow {
  const char* name;
  std::vector<std::string> buttons;
  std::vector<std::string> shown;
  int escapeAnswer;
};

class AlertButtons : public testing::TestWithParam<ButtonsRow> {};

TEST_P(AlertButtons, AreShownAndAnswerEscape) {
  const Alert alert{.buttons = GetParam().buttons};
  EXPECT_EQ(alert.shownButtons(), GetParam().shown);
  EXPECT_EQ(alert.escapeAnswer(), GetParam().escapeAnswer);
}

INSTANTIATE_TEST_SUITE_P(
    , AlertButtons,
    testing::Values(ButtonsRow{"None", {}, {"OK"}, kAlertDismissed},
                    ButtonsRow{"OneThatIsNoCancel", {"Go"}, {"Go"}, kAlertDismissed},
                    ButtonsRow{"CancelLast", {"Go", "Cancel"}, {"Go", "Cancel"}, 1001},
                    ButtonsRow{"CancelFirst", {"Cancel", "Go"}, {"Cancel", "Go"}, 1000},
                    ButtonsRow{"AnotherWord", {"Go", "cancel"}, {"Go", "cancel"}, kAlertDismissed}),
    rowName<ButtonsRow>);

class AlertsTest : public testing::Test {
 protected:
  AlertsTest() { resetMachine(); }
  static void speakMac() { machine().words = platform::kMacWords; }

  VordaProcess process_{.pid = 77,
                        .displayName = "Ollama Server",
                        .product = "Ollama",
                        .memMB = 1536,
                        .commandLine = "ollama serve",
                        .labRole = LabRole::inference,
                        .ownerName = "ada"};
  VordaLaunchAgent launchAgent_{.label = "hermes", .plistPath = "/units/hermes.service"};
};

TEST_F(AlertsTest, ANoticeIsATitleAndAMessageWithTheOneButton) {
  EXPECT_EQ(Alerts::notice("Failed", "Why.\n\nHow."),
            (Alert{.messageText = "Failed", .informativeText = "Why.\n\nHow."}));
}

TEST_F(AlertsTest, AProtectedProcessIsNamedWithItsOwner) {
  process_.ownerName = "root";
  EXPECT_EQ(Alerts::protectedMessage(process_),
            "Ollama Server is owned by root.\n\nVorda cannot force-quit it.");
}

TEST_F(AlertsTest, ForceQuitAsksWithTheProcessAndItsMemory) {
  Alert expected{.messageText = "Force Quit?",
                 .informativeText =
                     "Ollama Server\nPID 77\n1.50 GB RAM (System Monitor)\n\n"
                     "This cannot be undone.",
                 .style = Alert::Style::warning,
                 .buttons = {"Force Quit", "Cancel"}};
  EXPECT_EQ(Alerts::forceQuit(process_), expected);
  speakMac();
  expected.informativeText =
      "Ollama Server\nPID 77\n1.50 GB RAM (Activity Monitor)\n\nThis cannot be undone.";
  EXPECT_EQ(Alerts::forceQuit(process_), expected);
}

TEST_F(AlertsTest, ForceQuitOfAPidKnowsNoMore) {
  EXPECT_EQ(Alerts::forceQuit(78),
            (Alert{.messageText = "Force Quit?",
                   .informativeText = "process\nPID 78\n\nThis cannot be undone.",
                   .style = Alert::Style::warning,
                   .buttons = {"Force Quit", "Cancel"}}));
}

TEST_F(AlertsTest, DetailsTellAll) {
  EXPECT_EQ(Alerts::details(process_),
            (Alert{.messageText = "Ollama Server",
                   .informativeText = "Memory: 1.50 GB  (System Monitor scale)\nKind: Ollama\n"
                                      "PID: 77\nOwner: ada\n\nCommand:\nollama serve",
                   .command = "ollama serve"}));
  speakMac();
  EXPECT_THAT(Alerts::details(process_).informativeText,
              StartsWith("Memory: 1.50 GB  (Activity Monitor scale)\nKind: Ollama\n"));
}

TEST_F(AlertsTest, ACommandToCopyIsOneHarmlessLineThatSaysWhereItIsCut) {
  process_.commandLine = "sh -c a\nb\033]52;c;AA==\a";
  EXPECT_EQ(Alerts::wholeCommand(process_), "sh -c a\uFFFDb\uFFFD]52;c;AA==\uFFFD");
  process_.commandLine = std::string(8000, 'x');
  EXPECT_EQ(Alerts::wholeCommand(process_), process_.commandLine) << "more than details show";
  process_.isCommandLineCut = true;
  EXPECT_EQ(Alerts::wholeCommand(process_), process_.commandLine + " …");
}

TEST_F(AlertsTest, DetailsSayWhereAProcessBelongs) {
  EXPECT_THAT(Alerts::details(process_, {}, "Unit: ollama.service").informativeText,
              testing::HasSubstr("\nOwner: ada\nUnit: ollama.service\n\nCommand:"));
}

TEST_F(AlertsTest, DetailsSayThatAProcessIsProtected) {
  process_.isProtected = true;
  process_.ownerName = "root";
  EXPECT_EQ(Alerts::details(process_).informativeText,
            "Memory: 1.50 GB  (System Monitor scale)\nKind: Ollama\nPID: 77\nOwner: root\n\n"
            "Protected: cannot Force Quit from Vorda.\n\nCommand:\nollama serve");
}

struct CommandRow {
  const char* name;
  int characters;
  int shown;
  bool isCut = false;  ///< already where it was read
  const char* lineBelow = "";
};

class CommandLine : public AlertsTest, public testing::WithParamInterface<CommandRow> {};

TEST_P(CommandLine, IsCutAt800CharactersAndSaysSo) {
  const auto repeated = [](int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += "é";
    return result;
  };
  process_.commandLine = repeated(GetParam().characters);
  process_.isCommandLineCut = GetParam().isCut;
  EXPECT_THAT(Alerts::details(process_).informativeText,
              EndsWith("\n\nCommand:\n" + repeated(GetParam().shown) + GetParam().lineBelow));
}

constexpr const char* kFirst800 =
    "\n\nThe command line goes on: these are its first 800 characters.";

INSTANTIATE_TEST_SUITE_P(
    Table, CommandLine,
    testing::Values(CommandRow{"None", 0, 0}, CommandRow{"Short", 799, 799},
                    CommandRow{"Exactly", 800, 800},
                    CommandRow{"Longer", 801, 800, false, kFirst800},
                    CommandRow{"MuchLonger", 5000, 800, false, kFirst800},
                    CommandRow{"CutAndLonger", 5000, 800, true, kFirst800},
                    CommandRow{"CutAtWhatIsShown", 800, 800, true, kFirst800},
                    CommandRow{"CutBefore", 600, 600, true,
                               "\n\nThe command line goes on: these are its first 600 "
                               "characters."}),
    rowName<CommandRow>);

TEST_F(AlertsTest, DockerIsQuitFromItsWhale) {
  EXPECT_EQ(Alerts::quitDocker(),
            (Alert{.messageText = "Quit Docker Desktop",
                   .informativeText = "Use the Docker whale icon → Quit Docker Desktop."}));
}

TEST_F(AlertsTest, UnloadAsksWithTheFile) {
  EXPECT_EQ(
      Alerts::unload(launchAgent_),
      (Alert{.messageText = "Unload hermes?",
             .informativeText = "Stops it and prevents KeepAlive restart.\n/units/hermes.service",
             .buttons = {"Unload", "Cancel"}}));
}

TEST_F(AlertsTest, NobodysNameForgesALine) {
  process_.displayName = "x\nPID 1";
  process_.ownerName = "y\nz";
  launchAgent_ = {.label = "a\nb", .plistPath = "/a\n/b"};
  EXPECT_THAT(Alerts::forceQuit(process_).informativeText, StartsWith("x\uFFFDPID 1\nPID 77\n"));
  EXPECT_THAT(Alerts::protectedMessage(process_), StartsWith("x\uFFFDPID 1 is owned by y\uFFFDz."));
  EXPECT_EQ(Alerts::details(process_).messageText, "x\uFFFDPID 1");
  EXPECT_THAT(Alerts::details(process_).informativeText,
              EndsWith("\nOwner: y\uFFFDz\n\nCommand:\nollama serve"));
  EXPECT_EQ(Alerts::unload(launchAgent_).messageText, "Unload a\uFFFDb?");
  EXPECT_THAT(Alerts::unload(launchAgent_).informativeText, EndsWith("\n/a\uFFFD/b"));
}

TEST_F(AlertsTest, ACommandLineKeepsItsLines) {
  process_.commandLine = "python -c import os\nprint(1)";
  EXPECT_THAT(Alerts::details(process_).informativeText,
              EndsWith("\n\nCommand:\npython -c import os\nprint(1)"));
}

TEST_F(AlertsTest, NoTextSteersOrHidesWhatIsShown) {
  process_.commandLine = "rm \u202Etxt\x1B[2J\u200Bx";
  EXPECT_THAT(Alerts::details(process_).informativeText,
              EndsWith("\n\nCommand:\nrm \uFFFDtxt\uFFFD[2J\uFFFDx"));
  const Alert notice = Alerts::notice("Failed\n", "Failed to load a\u202Eb:\n\x1Bno");
  EXPECT_EQ(notice.messageText, "Failed\uFFFD");
  EXPECT_EQ(notice.informativeText, "Failed to load a\uFFFDb:\n\uFFFDno");
}

}  // namespace
