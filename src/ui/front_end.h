#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ui/alert.h"
#include "ui/menu.h"

/// Work that waits for its time. Forgetting the handle does not cancel the work.
class ScheduledWork {
 public:
  virtual ~ScheduledWork() = default;
  /// From now on the work does not run (any more). Harmless when it has run.
  virtual void cancel() = 0;
};

/// Whom a front end tells what happens to its menu: the controller, or a test. It tells of the
/// whole menu alone, not of the submenus.
class MenuDelegate {
 public:
  virtual ~MenuDelegate() = default;

  /// The menu is about to open: the last moment to change its items.
  virtual void menuNeedsUpdate() = 0;
  virtual void menuWillOpen() = 0;
  virtual void menuDidClose() = 0;

  /// The user chose this item. It shares the life of its menu.
  virtual void perform(std::shared_ptr<const MenuItem> item) = 0;
};

/// What shows the menu. It shows and reports and decides nothing: it tells a MenuDelegate what
/// happens to the menu, and does what the controller asks of it here. All calls, both ways, are
/// on one thread.
class FrontEnd {
 public:
  virtual ~FrontEnd() = default;

  /// The title of the program's presence on screen, where it has one.
  virtual void setTitle(const std::string& title) = 0;

  /// Its tooltip: lines joined by "\n".
  virtual void setToolTip(const std::string& toolTip) = 0;

  /// The menu was built anew: this one is shown from now on. Who holds it may still show the one
  /// before; it never changes, but for the strip.
  virtual void menuRebuilt(std::shared_ptr<const Menu> menu) = 0;

  /// The strip alone has new segments or pressure: draw it again, touch nothing else.
  virtual void stripChanged(const MemoryPressureView& strip) = 0;

  /// What the user is to know without having asked, beside the menu: lines joined by "\n"; ""
  /// for nothing (any more). A front end without a place for it leaves it out: what it is about
  /// says so in its submenu, too.
  virtual void setNotice(const std::string& notice) = 0;

  /// Closes the menu if it is open.
  virtual void cancelTracking() = 0;

  /// Shows the alert and waits for the answer: kAlertFirstButtonReturn plus the button's
  /// place, or kAlertDismissed. Timers go on meanwhile.
  virtual int runModal(const Alert& alert) = 0;

  /// Runs `work` every `seconds`, also while the menu is open.
  virtual std::shared_ptr<ScheduledWork> every(double seconds, std::function<void()> work) = 0;

  /// Runs `work` once, `seconds` from now.
  virtual std::shared_ptr<ScheduledWork> after(double seconds, std::function<void()> work) = 0;

  /// Ends the program.
  virtual void terminate() = 0;
};
