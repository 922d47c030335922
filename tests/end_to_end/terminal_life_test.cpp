// How the full-screen menu of the real program lives with its terminal.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <map>
#include <optional>

#include "end_to_end/terminal_session.h"
#include "fakes/row_name.h"
#include "tools/joined.h"
#include "tools/temp_folder.h"
#include "tools/without_proc.h"

namespace {

bool isShown(TerminalSession& terminal, const std::string& line = "Top RAM") {
  return terminal.waitFor(line) && terminal.screen().onAlternateScreen() &&
         terminal.screen().bracketsPastes();
}

void expectRestored(const TerminalSession& terminal) {
  EXPECT_FALSE(terminal.screen().onAlternateScreen());
  EXPECT_TRUE(terminal.screen().cursorIsVisible());
  EXPECT_FALSE(terminal.screen().mouseIsReported());
  EXPECT_FALSE(terminal.screen().bracketsPastes());
  EXPECT_FALSE(terminal.screen().hasApplicationKeys());
  EXPECT_TRUE(terminal.screen().writesPlainly());
  const termios now = terminal.modes();
  const termios& before = terminal.modesAtStart();
  EXPECT_EQ(now.c_iflag, before.c_iflag);
  EXPECT_EQ(now.c_oflag, before.c_oflag);
  EXPECT_EQ(now.c_cflag, before.c_cflag);
  EXPECT_EQ(now.c_lflag, before.c_lflag);
  EXPECT_TRUE(std::equal(std::begin(now.c_cc), std::end(now.c_cc), std::begin(before.c_cc)));
}

TEST(TerminalLife, EndsOnQ) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  EXPECT_TRUE(terminal.screen().mouseIsReported());
  EXPECT_FALSE(terminal.screen().cursorIsVisible());
  terminal.send("q");
  EXPECT_EQ(terminal.waitForEnd(), 0);
  expectRestored(terminal);
}

TEST(TerminalLife, DrawsWholePictures) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  terminal.settle();
  EXPECT_GT(terminal.screen().wholePictures(), 0);
  EXPECT_FALSE(terminal.screen().isHeldBack());
}

struct NewTerminalRow {
  const char* name;
  const char* kind;
};

class NewTerminal : public testing::TestWithParam<NewTerminalRow> {};

TEST_P(NewTerminal, IsShownAMenuWithoutItsDescription) {
  const TempFolder empty;  // no descriptions but the system's own
  TerminalSession terminal(TerminalSession::Options{
      .environment = {{"TERM", GetParam().kind}, {"HOME", empty.path().string()}}});
  EXPECT_TRUE(isShown(terminal));
}

INSTANTIATE_TEST_SUITE_P(Table, NewTerminal,
                         testing::Values(NewTerminalRow{"Kitty", "xterm-kitty"},
                                         NewTerminalRow{"Ghostty", "xterm-ghostty"},
                                         NewTerminalRow{"Alacritty", "alacritty"},
                                         NewTerminalRow{"Foot", "foot"},
                                         NewTerminalRow{"FootExtra", "foot-extra"},
                                         NewTerminalRow{"Wezterm", "wezterm"}),
                         rowName<NewTerminalRow>);

TEST(TerminalLife, LendsTheTerminalToASystemMonitor) {
  const TempFolder folder;
  folder.write("top", "#!/bin/sh\necho A MONITOR IS HERE\nread -r key\necho THE KEY WAS $key\n");
  std::filesystem::permissions(folder / "top", std::filesystem::perms::owner_all);
  TerminalSession terminal(
      TerminalSession::Options{.environment = {{"PATH", folder.path().string()}}});
  ASSERT_TRUE(isShown(terminal));
  ASSERT_TRUE(terminal.press("G", [&] { return terminal.screen().reversed() == " Quit Vorda\n"; }));
  ASSERT_TRUE(terminal.walkTo("Open System Monitor", true));
  ASSERT_TRUE(terminal.press(kEnter, "A MONITOR IS HERE"));
  EXPECT_FALSE(terminal.screen().onAlternateScreen());
  terminal.send("seen\r");
  EXPECT_TRUE(isShown(terminal, "Open System Monitor")) << "at its end, where it was";
  terminal.releaseKey();
  terminal.send("q");
  EXPECT_EQ(terminal.waitForEnd(), 0);
  expectRestored(terminal);
}

struct SignalRow {
  const char* name;
  int signal;
  int endedBy;  ///< the signal; 0: none, it returned 0
};

class TerminalSignals : public testing::TestWithParam<SignalRow> {};

TEST_P(TerminalSignals, LeaveTheTerminalUsable) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  terminal.send("?");  // also with an alert open
  ASSERT_TRUE(terminal.waitFor("This list"));
  ASSERT_EQ(kill(terminal.pid(), GetParam().signal), 0);
  const auto status = terminal.waitForEnd();
  ASSERT_TRUE(status);
  EXPECT_EQ(WIFSIGNALED(*status) ? WTERMSIG(*status) : -WEXITSTATUS(*status), GetParam().endedBy);
  expectRestored(terminal);
}

INSTANTIATE_TEST_SUITE_P(Orderly, TerminalSignals,
                         testing::Values(SignalRow{"Terminate", SIGTERM, 0},
                                         SignalRow{"Interrupt", SIGINT, 0},
                                         SignalRow{"HangUp", SIGHUP, 0}),
                         rowName<SignalRow>);
INSTANTIATE_TEST_SUITE_P(Crash, TerminalSignals,
                         testing::Values(SignalRow{"Segmentation", SIGSEGV, SIGSEGV},
                                         SignalRow{"Abort", SIGABRT, SIGABRT},
                                         SignalRow{"Bus", SIGBUS, SIGBUS},
                                         SignalRow{"Arithmetic", SIGFPE, SIGFPE},
                                         SignalRow{"Quit", SIGQUIT, SIGQUIT}),
                         rowName<SignalRow>);
// What nobody expects here, and what would end any program.
INSTANTIATE_TEST_SUITE_P(
    Unexpected, TerminalSignals,
    testing::Values(SignalRow{"User1", SIGUSR1, SIGUSR1}, SignalRow{"User2", SIGUSR2, SIGUSR2},
                    SignalRow{"Alarm", SIGALRM, SIGALRM},
                    SignalRow{"VirtualAlarm", SIGVTALRM, SIGVTALRM},
                    SignalRow{"Profile", SIGPROF, SIGPROF},
                    SignalRow{"ProcessorTime", SIGXCPU, SIGXCPU},
                    SignalRow{"FileSize", SIGXFSZ, SIGXFSZ}, SignalRow{"Poll", SIGPOLL, SIGPOLL},
                    SignalRow{"Power", SIGPWR, SIGPWR}, SignalRow{"Stack", SIGSTKFLT, SIGSTKFLT},
                    SignalRow{"FirstRealTime", SIGRTMIN, SIGRTMIN},
                    SignalRow{"LastRealTime", SIGRTMAX, SIGRTMAX}),
    rowName<SignalRow>);

TEST(TerminalLife, GoesOnAfterAPipeBroke) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  ASSERT_EQ(kill(terminal.pid(), SIGPIPE), 0);
  terminal.send("?");
  ASSERT_TRUE(terminal.waitFor("This list"));
  terminal.send("\003");
  EXPECT_EQ(terminal.waitForEnd(), 0);
  expectRestored(terminal);
}

class IgnoredSignals : public testing::TestWithParam<SignalRow> {};

TEST_P(IgnoredSignals, StayIgnored) {
  const int ignored = GetParam().signal;
  TerminalSession terminal({.prepare = [=] { return signal(ignored, SIG_IGN) != SIG_ERR; }});
  ASSERT_TRUE(isShown(terminal));
  ASSERT_EQ(kill(terminal.pid(), ignored), 0);
  terminal.send("?");
  EXPECT_TRUE(terminal.waitFor("This list"));
  EXPECT_TRUE(terminal.screen().onAlternateScreen());
  EXPECT_FALSE(terminal.screen().cursorIsVisible());
}

// A script's background job ignores SIGQUIT.
INSTANTIATE_TEST_SUITE_P(Table, IgnoredSignals,
                         testing::Values(SignalRow{"User1", SIGUSR1, 0},
                                         SignalRow{"Quit", SIGQUIT, 0}),
                         rowName<SignalRow>);

TEST(TerminalLife, EndsOnControlC) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  terminal.send("\003");
  EXPECT_EQ(terminal.waitForEnd(), 0);
  expectRestored(terminal);
}

TEST(TerminalLife, EndsWithItsWindow) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  terminal.hangUp();
  EXPECT_EQ(terminal.waitForEnd(), 0);
}

TEST(TerminalLife, CanBeSuspended) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  for (int i = 0; i < 2; ++i) {
    terminal.send("\032");
    ASSERT_TRUE(terminal.waitUntilStopped());
    terminal.settle();
    expectRestored(terminal);
    terminal.continueInForeground();
    ASSERT_TRUE(isShown(terminal));
    EXPECT_TRUE(terminal.screen().mouseIsReported());
  }
  terminal.send("?");
  EXPECT_TRUE(terminal.waitFor("This list")) << "it still answers";
}

TEST(TerminalLife, DrawsItselfAnewAfterAStopThatItDidNotSeeComing) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  ASSERT_EQ(kill(terminal.pid(), SIGSTOP), 0);
  ASSERT_TRUE(terminal.waitUntilStopped());
  terminal.wipe();
  terminal.continueInForeground();
  ASSERT_TRUE(isShown(terminal));
  terminal.send("?");
  EXPECT_TRUE(terminal.waitFor("This list"));
}

TEST(TerminalLife, FollowsTheSizeOfItsWindow) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  terminal.resize(40, 10);
  EXPECT_TRUE(terminal.waitFor("q Quit"));
  terminal.send("\033[F");
  EXPECT_TRUE(terminal.waitFor("Quit Vorda")) << "it scrolls";
  terminal.resize(39, 9);
  EXPECT_TRUE(terminal.waitFor("Vorda needs 40 x 10"));
  EXPECT_TRUE(terminal.waitUntilGone("Quit Vorda"));
  terminal.resize(120, 40);
  EXPECT_TRUE(terminal.waitFor("Memory pressure"));
}

TEST(TerminalLife, KeepsAnAlertWhenItsWindowIsResized) {
  TerminalSession terminal;
  ASSERT_TRUE(isShown(terminal));
  terminal.send("?");
  ASSERT_TRUE(terminal.waitFor("[ OK ]"));
  terminal.resize(40, 10);
  EXPECT_TRUE(terminal.waitUntilGone("This list")) << "it scrolls";
  EXPECT_TRUE(terminal.waitFor("[ OK ]"));
  terminal.resize(100, 30);
  EXPECT_TRUE(terminal.waitFor("This list"));
  terminal.send("\033");
  EXPECT_TRUE(terminal.waitUntilGone("[ OK ]"));
}

struct TermRow {
  const char* name;
  std::optional<std::string> term;
  const char* says;
};

class UnusableTerminals : public testing::TestWithParam<TermRow> {};

TEST_P(UnusableTerminals, AreOneClearLine) {
  TerminalSession terminal({.environment = {{"TERM", GetParam().term}}});
  const auto status = terminal.waitForEnd();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 1);
  EXPECT_EQ(terminal.screen().row(0), GetParam().says);
  EXPECT_EQ(terminal.screen().row(1), "");
  expectRestored(terminal);
}

INSTANTIATE_TEST_SUITE_P(
    Table, UnusableTerminals,
    testing::Values(
        TermRow{"Unset", std::nullopt,
                "vorda: TERM is not set, so the kind of terminal is unknown"},
        TermRow{"Empty", "", "vorda: TERM is not set, so the kind of terminal is unknown"},
        TermRow{"Unknown", "no-such-terminal",
                "vorda: the kind of terminal \"no-such-terminal\" (TERM) is not known here"},
        TermRow{"Controls", "no\033[2Jsuch\n",
                "vorda: the kind of terminal \"no\uFFFD[2Jsuch\uFFFD\" (TERM) is not known here"},
        TermRow{"Dumb", "dumb", "vorda: a terminal of the kind \"dumb\" (TERM) can't show a menu"}),
    rowName<TermRow>);

TEST(TerminalLife, WithoutProcIsOneClearLine) {
  if (const auto reason = whyProcStays(); !reason.empty()) GTEST_SKIP() << reason;
  const TempFolder folder;
  folder.write("start", "#!/bin/sh\nexec '" + joined(withoutProc(VORDA), "' '") + "'\n");
  std::filesystem::permissions(folder / "start", std::filesystem::perms::owner_all);
  TerminalSession terminal({.program = folder / "start"});
  const auto status = terminal.waitForEnd();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 1);
  EXPECT_EQ(terminal.screen().row(0), "vorda: no process can be seen: /proc is not mounted");
  EXPECT_EQ(terminal.screen().row(1), "");
  expectRestored(terminal);
}

struct ColorRow {
  const char* name;
  std::map<std::string, std::optional<std::string>> environment;
  const char* ground;  ///< how the colour of the strip's ground begins
};

class TerminalColors : public testing::TestWithParam<ColorRow> {};

TEST_P(TerminalColors, AreWhatTheTerminalHas) {
  TerminalSession terminal({.environment = GetParam().environment});
  ASSERT_TRUE(terminal.waitFor("Top RAM"));  // the strip stands above
  const std::string beginning = GetParam().ground;
  const std::string ground = terminal.screen().groundAt(60, 1);
  EXPECT_EQ(ground.substr(0, beginning.size()), beginning);
  EXPECT_EQ(ground.empty(), beginning.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Table, TerminalColors,
    testing::Values(ColorRow{"Truecolor", {{"COLORTERM", "truecolor"}}, "48;2;"},
                    ColorRow{"Palette", {}, "48;5;"}, ColorRow{"Eight", {{"TERM", "xterm"}}, "40"},
                    ColorRow{"None", {{"NO_COLOR", "1"}, {"COLORTERM", "truecolor"}}, ""},
                    ColorRow{"EmptyNoColor", {{"NO_COLOR", ""}}, "48;5;"},
                    ColorRow{"Monochrome", {{"TERM", "vt100"}}, ""}),
    rowName<ColorRow>);

TEST(TerminalLocale, WithoutUtf8HasAsciiForEverySign) {
  TerminalSession terminal({.environment = {{"LANG", "C"}, {"NO_COLOR", "1"}}});
  ASSERT_TRUE(isShown(terminal));
  EXPECT_TRUE(terminal.waitFor("Vorda2"));
  EXPECT_TRUE(terminal.waitFor("- Top RAM (colors match graph) -"));
  const std::string picture = terminal.screen().picture();
  EXPECT_TRUE(std::all_of(picture.begin(), picture.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x80;
  })) << picture;
}

}  // namespace
