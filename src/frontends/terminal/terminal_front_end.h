#pragma once

#include <memory>
#include <optional>
#include <string>

#include "frontends/terminal/alert_view.h"
#include "frontends/terminal/input_guard.h"
#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/menu_view.h"
#include "frontends/terminal/screen.h"
#include "frontends/terminal/work_queue.h"
#include "ui/front_end.h"

namespace terminal {

/// The menu on a whole terminal. It is always visible here, so it counts as open only while a
/// submenu or an alert is open: that is when no row may move under the user's hands.
class TerminalFrontEnd : public FrontEnd {
 public:
  static constexpr double kHintSeconds = 2;  ///< that a hint stands

  /// `screen` outlives it.
  explicit TerminalFrontEnd(Screen& screen, double hintSeconds = kHintSeconds,
                            const InputLimits& inputLimits = {})
      : screen_(screen), hintSeconds_(hintSeconds), guard_(inputLimits) {}

  /// Shows what there is before the menu, at once: the first look at thousands of processes takes
  /// a while.
  void showFrame() { draw(); }

  /// Shows the menu, and reports to `delegate`, until the user quits or the terminal is gone.
  void run(MenuDelegate& delegate);

  void setTitle(const std::string& title) override;
  void setToolTip(const std::string& toolTip) override;
  void menuRebuilt(std::shared_ptr<const Menu> menu) override;
  void stripChanged(const MemoryPressureView& strip) override;
  void titlesChanged() override;
  void alertChanged(const Alert& alert) override;
  void setNotice(const std::string& notice) override;
  void setWarning(const std::optional<MemoryWarning>& warning) override;
  void cancelTracking() override;
  int runModal(const Alert& alert) override;
  std::shared_ptr<ScheduledWork> every(double seconds, std::function<void()> work) override;
  std::shared_ptr<ScheduledWork> after(double seconds, std::function<void()> work) override;
  void terminate() override;

 private:
  Input nextInput();
  Input clickedKey(const Input& input) const;
  void draw();
  MenuGeometry geometry() const;
  void layOut(AlertView* alert) const;
  void handle(const Input& input);
  bool counts(const Input& input);
  void hint(const std::string& text);
  void lookAtSelection();
  std::optional<std::string> takeCommand(const std::string& command, bool copies);
  void showMore();
  void arrange();
  void sortByNext();
  void openSubmenu();
  void reportSubmenu();
  void perform(std::shared_ptr<const MenuItem> item);
  void perform(Action action);
  void reportOpened();
  void reportClosed();

  Screen& screen_;
  double hintSeconds_;
  WorkQueue work_;
  InputGuard guard_;
  MenuView view_;
  AlertView* alert_ = nullptr;  ///< the one that is open, if any
  MenuDelegate* delegate_ = nullptr;
  MenuArrangement arrangement_;
  std::optional<ProcessReference> lookedAt_;  ///< whose working folder is shown
  std::string title_;
  Size drawnSize_;
  bool needsDrawing_ = true;
  bool menuOpen_ = false;  ///< what the delegate was last told
  bool ended_ = false;
  std::shared_ptr<ScheduledWork> endOfHint_;
};

}  // namespace terminal
