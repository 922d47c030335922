#pragma once

#include <sys/types.h>
#include <termios.h>

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "end_to_end/screen_model.h"

/// What a terminal sends for these keys.
inline const std::string kEnter = "\r";
inline const std::string kEscape = "\033";
#include "frontends/terminal/run_terminal.h"

/// The real program in a terminal of the test's own: a pseudo-terminal, a screen model for
/// eyes, and a small shell that runs the program as its foreground job. All of it is gone at
/// the end of its scope.
class TerminalSession {
 public:
  struct Options {
    int width = 80;
    int height = 24;
    /// Beside these the program has the test's own environment, without a display. An empty
    /// optional unsets.
    std::map<std::string, std::optional<std::string>> environment = {};
    uid_t user = 0;            ///< runs it as this user; 0: as the test's own
    std::string program = {};  ///< what to run; "": the program where it was built
    std::optional<terminal::TerminalWaits> waits = {};  ///< what it waits in place of its own waits
    /// What the program does before it starts, to itself; false: it does not start.
    std::function<bool()> prepare = {};
  };
  explicit TerminalSession(const Options& options);
  TerminalSession() : TerminalSession(Options{}) {}
  ~TerminalSession();
  TerminalSession(const TerminalSession&) = delete;
  TerminalSession& operator=(const TerminalSession&) = delete;

  const ScreenModel& screen() const { return screen_; }
  /// The program's pid.
  pid_t pid() const { return pid_; }

  void send(const std::string& bytes);
  /// Presses a key as somebody does who looks at the screen: when nothing has moved for a moment,
  /// and again when the program says that it came too soon, or does not seem to have heard it.
  /// Waits until it is so, or until that text is on the screen.
  ///@{
  bool press(const std::string& key, const std::function<bool()>& isSo);
  bool press(const std::string& key, const std::string& text);
  ///@}
  /// The same for a key that was released already.
  bool pressAtOnce(const std::string& key, const std::function<bool()>& isSo);
  /// A click there, for press().
  static std::string clickAt(ScreenModel::Place place);
  void resize(int width, int height);
  /// Closes the terminal's window.
  void hangUp();

  /// Reads what comes until it is so; false when it is not within a minute.
  bool waitUntil(const std::function<bool()>& isSo);
  bool waitFor(const std::string& text);
  bool waitUntilGone(const std::string& text);
  /// Reads all that comes until nothing has come for a moment.
  void settle();
  /// Settles for so long that the next key is taken for a press of its own.
  void releaseKey();
  /// Leaves only the rows that hold these words, whatever else the machine runs, and selects the
  /// first of them.
  bool filter(const std::string& words);
  /// Presses Down (or Up) until what is selected holds `text`, and back from the menu's end.
  bool walkTo(const std::string& text, bool up = false);

  /// Forgets what is on the screen, as another program's output would cover it.
  void wipe() { screen_.feed("\033[H\033[2J"); }

  /// Waits until the program was stopped; makes a stopped one go on in the foreground.
  bool waitUntilStopped();
  void continueInForeground();
  /// Waits until the program has ended: its wait status.
  std::optional<int> waitForEnd();

  /// The terminal's modes: as they are, and as they were before the program started.
  termios modes() const;
  const termios& modesAtStart() const { return modesAtStart_; }

 private:
  void start(const Options& options);
  bool read(int milliseconds);

  ScreenModel screen_;
  int terminal_ = -1;
  int commands_ = -1;  ///< to the shell
  int reports_ = -1;   ///< from the shell
  pid_t shell_ = -1;
  pid_t pid_ = -1;
  termios modesAtStart_{};
  bool stopped_ = false;
  std::optional<int> ended_;
};
