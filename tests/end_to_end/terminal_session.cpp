#include "end_to_end/terminal_session.h"

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utmp.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <initializer_list>

#include "tools/eventually.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kPatience{60};
constexpr int kMoment = 50;        // milliseconds
constexpr int kKeyReleased = 400;  // milliseconds: longer than the program waits after a move
constexpr std::chrono::seconds kUnheard{1};
const std::string kTooSoon = "That came too soon.";

/// What the shell tells: the program's pid, then its wait statuses.
struct Report {
  int value = 0;
};

void tell(int reports, int value) {
  const Report report{value};
  [[maybe_unused]] const auto written = write(reports, &report, sizeof report);
}

void giveTerminalTo(pid_t group) {
  signal(SIGTTOU, SIG_IGN);
  tcsetpgrp(STDIN_FILENO, group);
}

void becomeUser(uid_t user) {
  if (user == 0) return;
  if (setgroups(0, nullptr) != 0 || setgid(user) != 0 || setuid(user) != 0) _exit(126);
  prctl(PR_SET_PDEATHSIG, SIGKILL);  // changing the user forgot it
}

/// A shell's jobs handle every signal as usual, whatever the tests were started to ignore.
void handleSignalsAsUsual() {
  for (int number = 1; number < NSIG; ++number) signal(number, SIG_DFL);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void runWith(const terminal::TerminalWaits& waits) {
  const auto& [hint, input, controller] = waits;
  const auto text = [](double seconds) { return std::to_string(seconds); };
  execl(WAITING_PROGRAM, WAITING_PROGRAM, text(hint).c_str(), text(input.betweenKeys).c_str(),
        text(input.still).c_str(), text(input.slowestRepeat).c_str(),
        text(input.firstRepeat).c_str(), text(input.pastePatience).c_str(),
        text(controller.refresh).c_str(), text(controller.quit).c_str(), nullptr);
  _exit(127);
}

[[noreturn]] void runProgram(const TerminalSession::Options& options) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  setpgid(0, 0);
  giveTerminalTo(getpid());
  handleSignalsAsUsual();
  becomeUser(options.user);
  if (options.prepare && !options.prepare()) _exit(126);
  if (options.waits) runWith(*options.waits);
  const char* const program = options.program.empty() ? VORDA : options.program.c_str();
  execl(program, program, nullptr);
  _exit(127);
}

/// Runs the program in the foreground, reports when it stops and ends, and continues it when
/// told. Ends, and the program with it, when the test closes the pipe.
[[noreturn]] void runShell(int commands, int reports, const TerminalSession::Options& options) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  signal(SIGHUP, SIG_IGN);
  const pid_t program = fork();
  if (program == 0) runProgram(options);
  tell(reports, program);
  bool running = true;
  for (;;) {
    pollfd source{commands, POLLIN, 0};
    char command = 0;
    if (poll(&source, 1, 5) > 0) {
      if (::read(commands, &command, 1) != 1) break;
      giveTerminalTo(program);
      kill(program, SIGCONT);
    }
    int status = 0;
    if (!running || waitpid(program, &status, WNOHANG | WUNTRACED) != program) continue;
    running = WIFSTOPPED(status);
    giveTerminalTo(getpid());
    tell(reports, status);
  }
  if (running) {
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
  }
  _exit(0);
}

/// The shell is a copy of the test. What that has open it has to be able to close.
void closeAllBut(std::initializer_list<int> kept) {
  constexpr int kMost = 1024;
  for (int fd = STDERR_FILENO + 1; fd < kMost; ++fd) {
    if (std::find(kept.begin(), kept.end(), fd) == kept.end()) close(fd);
  }
}

void setEnvironment(const TerminalSession::Options& options) {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "LC_ALL", "LC_CTYPE", "NO_COLOR",
                           "COLORTERM", "COLUMNS", "LINES", "TERMINFO"}) {
    unsetenv(name);
  }
  setenv("TERM", "xterm-256color", 1);
  setenv("LANG", "C.UTF-8", 1);
  for (const auto& [name, value] : options.environment) {
    if (value) {
      setenv(name.c_str(), value->c_str(), 1);
    } else {
      unsetenv(name.c_str());
    }
  }
}

}  // namespace

TerminalSession::TerminalSession(const Options& options) : screen_(options.width, options.height) {
  start(options);
}

void TerminalSession::start(const Options& options) {
  std::array<int, 2> commands{};
  std::array<int, 2> reports{};
  ASSERT_EQ(pipe2(commands.data(), O_CLOEXEC), 0);
  ASSERT_EQ(pipe2(reports.data(), O_CLOEXEC), 0);
  winsize window{};
  window.ws_col = static_cast<unsigned short>(options.width);
  window.ws_row = static_cast<unsigned short>(options.height);
  int slave = -1;
  ASSERT_EQ(openpty(&terminal_, &slave, nullptr, nullptr, &window), 0);
  ASSERT_EQ(fcntl(terminal_, F_SETFD, FD_CLOEXEC), 0);
  ASSERT_EQ(tcgetattr(slave, &modesAtStart_), 0);

  shell_ = fork();
  ASSERT_GE(shell_, 0);
  if (shell_ == 0) {
    closeAllBut({commands[0], reports[1], slave});
    setEnvironment(options);
    if (login_tty(slave) != 0) _exit(125);
    runShell(commands[0], reports[1], options);
  }
  close(slave);
  close(commands[0]);
  close(reports[1]);
  commands_ = commands[1];
  reports_ = reports[0];
  EXPECT_TRUE(waitUntil([this] { return pid_ > 0; }));
}

TerminalSession::~TerminalSession() {
  hangUp();
  close(commands_);
  if (shell_ > 0) waitpid(shell_, nullptr, 0);
  close(reports_);
}

void TerminalSession::hangUp() {
  if (terminal_ >= 0) close(terminal_);
  terminal_ = -1;
}

/// Takes what has come within that time; false when nothing has.
bool TerminalSession::read(int milliseconds) {
  std::array<pollfd, 2> sources{{{terminal_, POLLIN, 0}, {reports_, POLLIN, 0}}};
  if (poll(sources.data(), sources.size(), milliseconds) <= 0) return false;
  bool something = false;
  if ((sources[0].revents & POLLIN) != 0) {
    std::array<char, 4096> bytes{};
    const ssize_t count = ::read(terminal_, bytes.data(), bytes.size());
    if (count > 0) screen_.feed({bytes.data(), static_cast<std::size_t>(count)});
    something = count > 0;
  }
  Report report;
  if ((sources[1].revents & POLLIN) != 0 && ::read(reports_, &report, sizeof report) > 0) {
    if (pid_ < 0) {
      pid_ = report.value;
    } else if (WIFSTOPPED(report.value)) {
      stopped_ = true;
    } else {
      ended_ = report.value;
    }
    something = true;
  }
  if (!something) usleep(1000);  // the terminal's other end is closed
  return something;
}

bool TerminalSession::waitUntil(const std::function<bool()>& isSo) {
  return eventually(isSo, [this] { read(kMoment); });
}

bool TerminalSession::waitFor(const std::string& text) {
  const bool seen = waitUntil([&] { return screen_.find(text).x >= 0 || ended_; });
  const bool there = seen && screen_.find(text).x >= 0;
  EXPECT_TRUE(there) << "no \"" << text << "\" on the screen:\n" << screen_.picture();
  return there;
}

bool TerminalSession::waitUntilGone(const std::string& text) {
  const bool gone = waitUntil([&] { return screen_.find(text).x < 0; });
  EXPECT_TRUE(gone) << "still \"" << text << "\" on the screen:\n" << screen_.picture();
  return gone;
}

void TerminalSession::settle() {
  while (read(kMoment)) {
  }
}

void TerminalSession::releaseKey() {
  while (read(kKeyReleased)) {
  }
}

bool TerminalSession::filter(const std::string& words) {
  if (!press("/", "Filter: _")) return false;
  send(words);
  return waitFor("Filter: " + words + "_") && press(kEnter, "Filter: " + words + "   Esc ends it");
}

bool TerminalSession::walkTo(const std::string& text, bool up) {
  const auto isThere = [&] { return screen_.reversed().find(text) != std::string::npos; };
  const auto deadline = Clock::now() + kPatience;
  settle();
  while (!isThere() && Clock::now() < deadline) {
    // Rows may have the same title, but not the same tooltip.
    const std::string before = screen_.picture() + screen_.reversed();
    send(up ? "\033[A" : "\033[B");
    // As in pressAtOnce, a key may stay without an effect.
    const auto unheard = Clock::now() + kUnheard;
    const auto isUnheard = [&] { return screen_.picture() + screen_.reversed() == before; };
    while (isUnheard() && Clock::now() < unheard) read(kMoment);
    settle();
    // At the last row: the one that is looked for has changed places with a row already passed.
    if (isUnheard()) up = !up;
  }
  EXPECT_TRUE(isThere()) << "can't select \"" << text << "\" on the screen:\n" << screen_.picture();
  return isThere();
}

void TerminalSession::send(const std::string& bytes) {
  ASSERT_EQ(write(terminal_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

bool TerminalSession::press(const std::string& key, const std::function<bool()>& isSo) {
  releaseKey();
  return pressAtOnce(key, isSo);
}

bool TerminalSession::press(const std::string& key, const std::string& text) {
  const bool pressed = press(key, [&] { return screen_.find(text).x >= 0; });
  EXPECT_TRUE(pressed) << "no \"" << text << "\" on the screen:\n" << screen_.picture();
  return pressed;
}

bool TerminalSession::pressAtOnce(const std::string& key, const std::function<bool()>& isSo) {
  const auto deadline = Clock::now() + kPatience;
  while (Clock::now() < deadline) {
    send(key);
    // A program that was busy finds this key together with the one before, which looks like a
    // paste: it does nothing then, and says nothing.
    const auto unheard = Clock::now() + kUnheard;
    while (!isSo() && screen_.find(kTooSoon).x < 0 && Clock::now() < unheard) read(kMoment);
    if (isSo()) return true;
    releaseKey();
    if (isSo()) return true;
  }
  return isSo();
}

std::string TerminalSession::clickAt(ScreenModel::Place place) {
  const std::string where = std::to_string(place.x + 1) + ";" + std::to_string(place.y + 1);
  return "\033[<0;" + where + "M\033[<0;" + where + "m";
}

void TerminalSession::resize(int width, int height) {
  settle();
  screen_.resize(width, height);
  winsize window{};
  window.ws_col = static_cast<unsigned short>(width);
  window.ws_row = static_cast<unsigned short>(height);
  ASSERT_EQ(ioctl(terminal_, TIOCSWINSZ, &window), 0);
}

bool TerminalSession::waitUntilStopped() {
  return waitUntil([this] { return stopped_; });
}

void TerminalSession::continueInForeground() {
  stopped_ = false;
  ASSERT_EQ(write(commands_, "c", 1), 1);
}

std::optional<int> TerminalSession::waitForEnd() {
  waitUntil([this] { return ended_.has_value(); });
  if (terminal_ >= 0) settle();
  return ended_;
}

termios TerminalSession::modes() const {
  termios modes{};
  EXPECT_EQ(tcgetattr(terminal_, &modes), 0);
  return modes;
}
