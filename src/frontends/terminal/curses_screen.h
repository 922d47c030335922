#pragma once

#include <memory>
#include <optional>
#include <string>

#include "frontends/terminal/curses_colors.h"
#include "frontends/terminal/held_stderr.h"
#include "frontends/terminal/screen.h"
#include "frontends/terminal/signal_pipe.h"
#include "frontends/terminal/terminal_rescue.h"

namespace terminal {

struct TerminalCheck;

/// The terminal on standard input and output, drawn by the curses library. The constructor takes
/// it over; the destructor, a suspension and a crash restore its former state. There is at most
/// one.
class CursesScreen : public Screen {
 public:
  /// Empty when the terminal can't show a menu; `error` then says why, in one line.
  [[nodiscard]] static std::unique_ptr<CursesScreen> open(std::string& error);
  ~CursesScreen() override;
  CursesScreen(const CursesScreen&) = delete;
  CursesScreen& operator=(const CursesScreen&) = delete;

  const Look& look() const override { return look_; }
  Size size() const override;
  void draw(const CellGrid& grid) override;
  Input nextInput(std::optional<double> seconds) override;
  void ring() override;
  [[nodiscard]] bool runSystemMonitor() override;
  void copy(const std::string& text) override;
  void showPlain(const std::string& text) override;
  double now() const override;

 private:
  explicit CursesScreen(bool unicode);
  bool start(const TerminalCheck& check);
  void drawCell(const Cell& cell, int x, int y);
  void take();
  void giveBack();
  std::optional<Input> nextKey();
  std::optional<Input> answer(int signal);
  std::optional<Input> answerSignals();
  void suspend();
  void waitForLine();
  void repaint();

  SignalPipe signals_;  // made before curses starts, which then leaves signals alone
  HeldStderr errors_;
  Look look_;
  std::optional<CursesColors> colors_;
  std::optional<TerminalRescue> rescue_;
  double quietUntil_ = 0;  ///< when no input was waiting, the last time we looked
  bool continuedBySuspend_ = false;
  bool toldToEnd_ = false;  ///< while another program had the terminal
};

}  // namespace terminal
