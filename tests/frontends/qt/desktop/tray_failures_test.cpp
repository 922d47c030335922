// Displays and buses that are not there, die or never answer.
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>

#include "fakes/row_name.h"
#include "frontends/qt/desktop/tray_test.h"
#include "frontends/qt/run_tray.h"
#include "tools/scoped_variable.h"
#include "tools/without_proc.h"

namespace {

using TrayFailures = TrayTest;

std::string lines(const std::string& text) {
  return std::to_string(std::count(text.begin(), text.end(), '\n')) + " line(s)";
}

TEST_F(TrayFailures, DisplayThatIsNotThereIsOneLine) {
  program = desktop.startProgram({{"DISPLAY", ":4711"}});
  EXPECT_EQ(program->errorOutput(), "vorda: can't reach the display :4711\n");
}

TEST_F(TrayFailures, DisplayThatIsNotThereIsAnError) {
  program = desktop.startProgram({{"DISPLAY", ":4711"}, {"WAYLAND_DISPLAY", "nowhere"}});
  const auto status = program->wait();
  ASSERT_TRUE(status);
  EXPECT_TRUE(WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 1);
}

TEST_F(TrayFailures, DisplayOfControlCharactersIsOneHarmlessLine) {
  program = desktop.startProgram({{"DISPLAY", ":4\033[2J\n\u009B1A\xFF"}});
  EXPECT_EQ(program->errorOutput(),
            "vorda: can't reach the display :4\uFFFD[2J\uFFFD\uFFFD1A\uFFFD\n");
}

struct VariableRow {
  const char* name;
  const char* value;
};

class UnusableVariables : public TrayTest, public testing::WithParamInterface<VariableRow> {};

TEST_P(UnusableVariables, AreNotPrinted) {
  program = desktop.startProgram({{GetParam().name, GetParam().value}});
  ASSERT_TRUE(windowAppears(kWindow));
  program->signal(SIGTERM);
  EXPECT_EQ(program->errorOutput(), "");
}

INSTANTIATE_TEST_SUITE_P(Table, UnusableVariables,
                         testing::Values(VariableRow{"LC_ALL", "x\033[2J"},
                                         VariableRow{"FC_LANG", "x\033[2J"},
                                         VariableRow{"SESSION_MANAGER", "x\033[2J"}),
                         rowName<VariableRow>);

TEST_F(TrayFailures, WithoutProcIsOneLineAndAnError) {
  if (const auto reason = whyProcStays(); !reason.empty()) GTEST_SKIP() << reason;
  const std::vector<std::string> command = withoutProc(VORDA_TRAY_PROGRAM);
  desktop.setProgram(command.front());
  program = desktop.startProgram({}, {command.begin() + 1, command.end()});
  const auto status = program->wait();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 1);
  EXPECT_EQ(program->errorOutput(), "vorda: no process can be seen: /proc is not mounted\n");
}

TEST_F(TrayFailures, WaylandThatIsNotThereLeavesX11) {
  program = desktop.startProgram({{"WAYLAND_DISPLAY", "nowhere"}});
  EXPECT_TRUE(windowAppears(kWindow));
}

TEST_F(TrayFailures, DisplayThatDiesIsOneLineAndAnError) {
  startInTray();
  desktop.killScreen();
  const auto status = program->wait();
  ASSERT_TRUE(status);
  EXPECT_TRUE(WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 1);
  const std::string errors = program->errorOutput();
  EXPECT_EQ(lines(errors), "1 line(s)") << errors;
}

TEST_F(TrayFailures, DisplayThatDiesUnderAnAlertIsNoHang) {
  startInTray();
  choose("About Vorda");
  ASSERT_TRUE(windowAppears(kDialog));
  desktop.killScreen();
  const auto status = program->wait();
  ASSERT_TRUE(status);
  EXPECT_EQ(WEXITSTATUS(*status), 1);
}

TEST_F(TrayFailures, WithoutABusItStartsWithTheWindow) {
  desktop.setBusAddress("unix:path=/nowhere/at/all");
  program = desktop.startProgram();
  EXPECT_TRUE(windowAppears(kWindow));
}

TEST_F(TrayFailures, WithoutABusTwoMayRun) {
  desktop.setBusAddress("unix:path=/nowhere/at/all");
  program = desktop.startProgram();
  ASSERT_TRUE(windowAppears(kWindow));
  const auto second = desktop.startProgram();
  EXPECT_TRUE(desktop.eventuallyShowsWindows(2, kWindow));
  EXPECT_EQ(second->poll(), std::nullopt);
  EXPECT_EQ(program->poll(), std::nullopt);
}

TEST_F(TrayFailures, BusThatDiesGivesTheWindowBack) {
  startInTray();
  desktop.killBus();
  EXPECT_TRUE(desktop.eventuallyShowsWindow(kWindow));
  EXPECT_EQ(program->poll(), std::nullopt);
}

TEST_F(TrayFailures, BusThatComesLateIsFound) {
  const TempFolder folder;
  const std::string address = "unix:path=" + (folder / "late").string();
  desktop.setBusAddress(address);
  program = desktop.startProgram();
  ASSERT_TRUE(windowAppears(kWindow));
  BackgroundProgram bus({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1",
                         "--address=" + address});
  ASSERT_NE(bus.firstLine(), "");
  host = std::make_unique<TrayHost>(address);
  host->appear();
  EXPECT_TRUE(host->eventually([this] { return !host->icon().empty(); }));
  EXPECT_TRUE(windowGoes(kWindow));
}

TEST_F(TrayFailures, BusThatNeverAnswersIsNotWaitedFor) {
  const TempFolder folder;
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  const std::string path = folder / "silent";
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const int silent = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(bind(silent, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(silent, 8), 0);

  desktop.setBusAddress("unix:path=" + path);
  program = desktop.startProgram();
  EXPECT_TRUE(windowAppears(kWindow));
  close(silent);
}

/// As a second start of the program, which waits less long.
TEST_F(TrayFailures, InstanceThatNeverAnswersIsOneLineAndAnError) {
  startInTray();
  program->signal(SIGSTOP);
  const ScopedVariable bus("DBUS_SESSION_BUS_ADDRESS", desktop.busAddress().c_str());
  testing::internal::CaptureStderr();
  EXPECT_EQ(runTray({}, false, std::chrono::milliseconds(200)), EXIT_FAILURE);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vorda: another instance is running and does not answer\n");
  program->signal(SIGCONT);
}

}  // namespace
