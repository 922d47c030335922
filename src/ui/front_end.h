#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "ui/alerts.h"
#include "ui/memory_warning_text.h"
#include "ui/menu.h"
#include "ui/menu_arrangement.h"

/// Work that will run later. Destroying this handle does not cancel the work.
class ScheduledWork {
 public:
  virtual ~ScheduledWork() = default;
  /// The work does not run any more. Does nothing when it has already run.
  virtual void cancel() = 0;
};

/// Is told by a front end what happens to its menu: the controller, or a test. Only the whole
/// menu's opening and closing is reported, not that of submenus.
class MenuDelegate {
 public:
  virtual ~MenuDelegate() = default;

  /// The menu is about to open: the last moment to change its items.
  virtual void menuNeedsUpdate() = 0;
  virtual void menuWillOpen() = 0;
  virtual void menuDidClose() = 0;

  /// The submenu of this row is about to open, or has just opened.
  virtual void submenuWillOpen(const MenuItem&) {}

  /// The user chose this item: one of the menu, which the pointer then keeps alive, or one made for
  /// the choice alone, with its action and what that acts on (of a key, and on a Mac).
  virtual void perform(std::shared_ptr<const MenuItem> item) = 0;

  /// From now on the menu is to be arranged so; a new one is built at once.
  virtual void arrange(const MenuArrangement&) {}
};

/// Shows the menu. It decides nothing: it reports to a MenuDelegate what happens to the menu, and
/// does what the controller asks of it here. All calls in both directions are on one thread.
class FrontEnd {
 public:
  virtual ~FrontEnd() = default;

  /// The title of the program's presence on screen, where it has one.
  virtual void setTitle(const std::string& title) = 0;

  /// Its tooltip: lines joined by "\n".
  virtual void setToolTip(const std::string& toolTip) = 0;

  /// There is a new menu, which is to be shown from now on. A menu never changes but for its
  /// strip and its live titles, so the old one can still be shown while it is open.
  virtual void menuRebuilt(std::shared_ptr<const Menu> menu) = 0;

  /// The strip alone has new segments or pressure: draw it again, touch nothing else.
  virtual void stripChanged(const MemoryPressureView& strip) = 0;

  /// Live titles (MenuItem::live) have changed: show shownTitle() again, touch nothing else. A
  /// front end that can't change what is open ignores it.
  virtual void titlesChanged() {}

  /// The open alert says more by now: its informative text has become this alert's. A front end
  /// that can't change an open one ignores it.
  virtual void alertChanged(const Alert&) {}

  /// A text to show outside of the menu, which the user has not asked for: lines joined by "\n";
  /// "" removes it. A front end without a place for it ignores it, because the submenu of the
  /// process says the same.
  virtual void setNotice(const std::string& notice) = 0;

  /// Asks for attention because memory is short: once for each warning that is set. Empty: the
  /// user has seen it, or it is over. The notice says the same. A front end that can't ask for
  /// attention ignores it.
  virtual void setWarning(const std::optional<MemoryWarning>& warning) = 0;

  /// Closes the menu if it is open.
  virtual void cancelTracking() = 0;

  /// Shows the alert and waits for the answer: kAlertFirstButtonReturn plus the button's place, or
  /// kAlertDismissed. Timers keep running in the meantime.
  virtual int runModal(const Alert& alert) = 0;

  /// Runs `work` every `seconds`, also while the menu is open.
  virtual std::shared_ptr<ScheduledWork> every(double seconds, std::function<void()> work) = 0;

  /// Runs `work` once, `seconds` from now.
  virtual std::shared_ptr<ScheduledWork> after(double seconds, std::function<void()> work) = 0;

  /// Ends the program.
  virtual void terminate() = 0;
};
