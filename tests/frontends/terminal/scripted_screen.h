#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "frontends/terminal/screen.h"

/// A terminal without a terminal: it plays a script of keys, waits and looks at the screen,
/// on a clock of its own, and then hangs up.
class ScriptedScreen : public terminal::Screen {
 public:
  terminal::Look look_{};
  terminal::Size size_{80, 24};
  std::vector<double> waits;  ///< how long each wait without anything happening was to be

  void press(terminal::Input::Kind kind) { play(terminal::Input{.kind = kind}); }
  void type(char32_t character) {
    play(terminal::Input{.kind = terminal::Input::Kind::character, .character = character});
  }
  void play(const terminal::Input& input) { steps_.push_back({.input = input, .seconds = pause}); }
  /// A key that was there already when the program came to read it, for up to so many seconds.
  void playLate(const terminal::Input& input, double seconds) {
    steps_.push_back({.input = input, .late = seconds});
  }
  /// Comes before what else is still to come; for a step that has to look first.
  void playNow(const terminal::Input& input) { steps_.push_front({.input = input}); }
  /// Nothing happens for so many seconds.
  void wait(double seconds) { steps_.push_back({.seconds = seconds}); }
  /// Runs when all that came before was answered and is on the screen.
  void then(std::function<void()> look) { steps_.push_back({.look = std::move(look)}); }
  /// Presses Down until the row that holds `text` is the selected one.
  void walkTo(const std::string& text, terminal::Input::Kind step = terminal::Input::Kind::down);

  /// The screen as text, and the rows of it that are painted in reverse.
  std::string picture() const;
  std::string reversed() const;
  /// The first line that holds the text; -1 when none does.
  int lineOf(const std::string& text) const;
  bool shows(const std::string& text) const { return picture().find(text) != std::string::npos; }
  int monitors = 0;                 ///< how often a system monitor can be run on it
  int rings = 0;                    ///< of the bell
  std::vector<std::string> copied;  ///< into the clipboard
  std::vector<std::string> shownPlain;
  int walksGivenUp = 0;                        ///< a row that walkTo() looked for was not there
  std::function<void(double)> whenTimePasses;  ///< is told how many seconds
  double pause = 1;  ///< so many seconds pass before each key that is pressed from now on

  const terminal::Look& look() const override { return look_; }
  terminal::Size size() const override { return size_; }
  void draw(const terminal::CellGrid& grid) override { grid_ = grid; }
  terminal::Input nextInput(std::optional<double> seconds) override;
  void ring() override { ++rings; }
  bool runSystemMonitor() override { return monitors > 0 && monitors-- > 0; }
  void copy(const std::string& text) override { copied.push_back(text); }
  void showPlain(const std::string& text) override { shownPlain.push_back(text); }
  double now() const override { return now_; }

 private:
  bool passes(double& seconds, std::optional<double> limit);
  struct Step {
    std::optional<terminal::Input> input = {};
    double seconds = 0;  ///< that pass before it
    double late = 0;
    std::function<void()> look = {};
    std::string walkTo = {};
    terminal::Input::Kind step = {};
    int stepsLeft = 60;
  };

  double now_ = 1000;
  std::deque<Step> steps_;
  terminal::CellGrid grid_{{0, 0}};
};
