#include "frontends/terminal/curses_screen.h"

#include <curses.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string_view>

#include "frontends/terminal/character_set.h"
#include "frontends/terminal/curses_input.h"
#include "frontends/terminal/direct_color.h"
#include "frontends/terminal/guest_program.h"
#include "frontends/terminal/terminfo.h"
#include "text/scalar.h"

namespace terminal {
namespace {

Size windowSize() {
  winsize window{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) != 0 || window.ws_col == 0) return {};
  return {window.ws_col, window.ws_row};
}

/// A cell's text as wide characters. A character that the C library measures differently is shown
/// as "?" and such a mark is left out: else the rest of the row would be shifted.
std::array<wchar_t, CCHARW_MAX + 1> wideText(const Cell& cell) {
  std::array<wchar_t, CCHARW_MAX + 1> wide{};
  std::size_t count = 0;
  std::string_view rest = cell.text();
  while (!rest.empty() && count < CCHARW_MAX) {
    const auto scalar = text::firstScalar(rest);
    wide[count] = static_cast<wchar_t>(std::max(scalar.value, 0));
    const int columns = wcwidth(wide[count]);
    if (columns != (count == 0 ? cell.columns : 0)) {
      wide[count] = count == 0 ? L'?' : L'\0';
      break;
    }
    ++count;
    rest.remove_prefix(scalar.length);
  }
  return wide;
}

attr_t attributesOf(const Style& style) {
  attr_t attributes = A_NORMAL;
  if (style.bold) attributes |= A_BOLD;
  if (style.dim) attributes |= A_DIM;
  if (style.reverse) attributes |= A_REVERSE;
  return attributes;
}

/// How many bytes of input are still to be read.
int unreadBytes() {
  int unread = 0;
  return ioctl(STDIN_FILENO, FIONREAD, &unread) == 0 ? unread : 0;
}

/// Flushes at once, because curses writes to the terminal past the buffer of stdout.
void send(const std::string& bytes) {
  std::fputs(bytes.c_str(), stdout);
  std::fflush(stdout);
}

/// curses keeps three screens: what the terminal shows, what it shall show, and stdscr. We draw on
/// the second and only read keys from stdscr, so stdscr is shrunk to one cell (a cell takes 28
/// bytes). untouchwin: else reading a key would draw it.
void spareStandardScreen() {
  wresize(stdscr, 1, 1);
  untouchwin(stdscr);
}

int millisecondsUntil(std::optional<double> end, double now) {
  if (!end) return -1;
  return static_cast<int>(std::ceil(std::clamp((*end - now) * 1000, 0.0, 3600000.0)));
}

}  // namespace

std::unique_ptr<CursesScreen> CursesScreen::open(std::string& error) {
  const bool unicode = takeCharacterSet();
  const TerminalCheck check = checkTerminal();
  error = check.problem;
  if (!error.empty()) return nullptr;

  std::unique_ptr<CursesScreen> screen(new CursesScreen(unicode));
  if (screen->start(check)) return screen;
  error = "the terminal can't be used";
  return nullptr;
}

CursesScreen::CursesScreen(bool unicode)
    : look_{unicode ? Glyphs::unicode() : Glyphs::ascii(), false} {}

CursesScreen::~CursesScreen() {
  if (rescue_) giveBack();
}

/// Does only what curses does not do itself when it draws next.
void CursesScreen::take() {
  rescue_->arm();
  send(pasteBrackets(true));
}

void CursesScreen::giveBack() {
  send(pasteBrackets(false));
  endwin();
  rescue_->disarm();
}

bool CursesScreen::start(const TerminalCheck& check) {
  termios modes{};
  if (tcgetattr(STDIN_FILENO, &modes) != 0) return false;
  {
    std::optional<DescriptionInEnvironment> description;
    if (!check.description.empty()) description.emplace(check.description);
    if (newterm(check.name.c_str(), stdout, stdin) == nullptr) return false;
  }
  rescue_.emplace(STDIN_FILENO, modes, resetBytes(LINES - 1));
  take();
  colors_.emplace(check.depth);
  look_.colored = check.depth != ColorDepth::none;
  // The font of a console with eight colours lacks the divider; the letters are enough there.
  if (check.depth == ColorDepth::eight) look_.glyphs.divider = " ";
  prepareKeys();
  curs_set(0);
  leaveok(newscr, TRUE);
  spareStandardScreen();
  return true;
}

Size CursesScreen::size() const {
  return {COLS, LINES};
}

double CursesScreen::now() const {
  const auto time = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(time).count();
}

void CursesScreen::draw(const CellGrid& grid) {
  werase(newscr);
  const Size size = grid.size();
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) drawCell(grid.at(x, y), x, y);
  }
  // One picture after the other, never half of the next one, on terminals that know how.
  send(synchronizedUpdate(true));
  doupdate();
  send(synchronizedUpdate(false));
}

void CursesScreen::ring() {
  beep();
}

void CursesScreen::drawCell(const Cell& cell, int x, int y) {
  if (cell.columns == 0) return;
  if (cell.text() == " " && cell.style == Style{}) return;  // erased it is already
  const auto wide = wideText(cell);
  int pair = colors_->pairOf(cell.style);
  cchar_t character;
  setcchar(&character, wide.data(), attributesOf(cell.style), 0, &pair);
  mvwadd_wch(newscr, y, x, &character);
}

Input CursesScreen::nextInput(std::optional<double> seconds) {
  const auto end = seconds ? std::optional(now() + *seconds) : std::nullopt;
  for (;;) {
    if (const auto input = answerSignals()) return *input;
    if (const auto key = nextKey()) return *key;
    std::array<pollfd, 2> sources{{{STDIN_FILENO, POLLIN, 0}, {signals_.descriptor(), POLLIN, 0}}};
    const int ready = poll(sources.data(), sources.size(), millisecondsUntil(end, now()));
    if (const auto input = answerSignals()) return *input;
    if (ready == 0) return {};
    if (ready < 0) continue;

    const auto happened = sources[0].revents;
    if (happened != 0 && ((happened & POLLIN) == 0 || unreadBytes() == 0)) {
      return {.kind = Input::Kind::ended};
    }
    quietUntil_ = now();  // nothing was waiting before that
  }
}

/// The next waiting key, with the earliest time at which it can have come.
std::optional<Input> CursesScreen::nextKey() {
  auto key = readKey();
  if (key) {
    key->came = quietUntil_;
    key->followed = unreadBytes() > 0;
  }
  if (!key || !key->followed) quietUntil_ = now();
  return key;
}

std::optional<Input> CursesScreen::answerSignals() {
  if (toldToEnd_) return Input{.kind = Input::Kind::ended};
  std::optional<Input> input;
  while (const auto signal = signals_.next()) {
    const auto answered = answer(*signal);
    if (answered && answered->kind == Input::Kind::ended) return answered;
    if (answered) input = answered;
  }
  return input;
}

std::optional<Input> CursesScreen::answer(int signal) {
  switch (signal) {
    case SIGTSTP:
      suspend();
      break;
    case SIGCONT:
      // Somebody stopped the program in a way that it can't catch, so the terminal was not
      // restored.
      if (!continuedBySuspend_) {
        giveBack();
        take();
      }
      continuedBySuspend_ = false;
      repaint();
      break;
    case SIGWINCH:
      repaint();
      break;
    case SIGHUP:
    case SIGINT:
    case SIGTERM:
      return Input{.kind = Input::Kind::ended};
    default:
      return std::nullopt;
  }
  return Input{.kind = Input::Kind::redraw};
}

bool CursesScreen::runSystemMonitor() {
  static constexpr const char* kMonitors[] = {"btop", "htop", "top"};
  for (const char* display : {"WAYLAND_DISPLAY", "DISPLAY"}) {
    const char* const value = std::getenv(display);
    if (value != nullptr && *value != '\0') return false;
  }
  giveBack();
  const bool ran = runGuest(kMonitors, signals_, toldToEnd_);
  take();
  repaint();
  return ran;
}

void CursesScreen::copy(const std::string& text) {
  send(clipboardBytes(text));
}

/// What leaves the whole screen stands on the ordinary one, where the terminal breaks its lines and
/// puts them together again when they are marked.
void CursesScreen::showPlain(const std::string& text) {
  giveBack();
  send(text + "\n\nEnter goes back. ");
  waitForLine();
  take();
  repaint();
}

void CursesScreen::waitForLine() {
  for (;;) {
    std::array<pollfd, 2> sources{{{STDIN_FILENO, POLLIN, 0}, {signals_.descriptor(), POLLIN, 0}}};
    poll(sources.data(), sources.size(), -1);
    while (const auto signal = signals_.next()) {
      if (*signal == SIGTSTP) signals_.stop();
      toldToEnd_ = toldToEnd_ || *signal == SIGINT || *signal == SIGTERM || *signal == SIGHUP;
    }
    if (toldToEnd_) return;
    if (sources[0].revents == 0) continue;
    std::array<char, 256> line{};
    // Without any bytes it was Ctrl-D, or the terminal is gone, as nextInput() finds out.
    if (read(STDIN_FILENO, line.data(), line.size()) >= 0 || errno != EINTR) return;
  }
}

void CursesScreen::suspend() {
  giveBack();
  continuedBySuspend_ = true;
  signals_.stop();
  take();
  repaint();
}

/// Makes the next draw() paint everything, in the window's present size.
void CursesScreen::repaint() {
  const Size window = windowSize();
  if (window.width > 0 && window != size()) {
    resizeterm(window.height, window.width);
    spareStandardScreen();
  }
  clearok(curscr, TRUE);
}

}  // namespace terminal
