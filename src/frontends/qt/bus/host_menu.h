#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <set>
#include <string_view>

#include "frontends/qt/exported_menu.h"
#include "platform/linux/sd_bus_ptr.h"
#include "ui/memory_pressure_view.h"
#include "ui/menu.h"

/// What a HostMenu waits for, in milliseconds.
struct HostMenuTimes {
  int longestTracking = 300000;  ///< how long the menu counts as open where no host closes it
  int oneOpening = 1000;         ///< a host that announces the menu again so soon still opens it
};

/// Serves the menu that tray hosts draw themselves (com.canonical.dbusmenu).
///
/// A host says when it opens the menu, but not every host says when it closes it. While the menu
/// is open nothing but the labels of the strip and of live titles change in it. It counts as open
/// until the host closes it or opens it again, or an item is chosen; with a host that has never
/// reported a closing, for five minutes at most.
///
/// A host that announces the menu (AboutToShow) is told in the answer that the layout is new, and
/// not by a signal as well: on that, Plasma would fill a menu that is already shown anew, and it
/// would no longer scroll. A changed label does the same, so there a menu that has to scroll keeps
/// its labels while open (ExportedMenu::staysStill).
class HostMenu : public QObject {
  Q_OBJECT

 public:
  static constexpr const char* kPath = "/MenuBar";

  HostMenu(sd_bus* bus, ExportedMenu& menu, const HostMenuTimes& times = {});

  void show(std::shared_ptr<const Menu> menu);
  /// Which host shows the menu from now on. The menu counts as closed in a new host.
  void setHost(TrayHostKind host);
  /// Sets how much room the screen has. The menu counts as closed after the screen has changed.
  void setRoom(ShortMenu::Room room);
  void showStrip(const MemoryPressureView& strip);
  /// Live titles have changed: shows them in an open menu, too.
  void showTitles();

  /// Another menu has opened, so this one can't be open any more.
  void assumeClosed();
  /// The host has gone, and the menu with it. The next host is not expected to report closings
  /// until it does.
  void hostGone();

 Q_SIGNALS:
  /// The host is about to show the menu: the last moment to change its items.
  void opening();
  void closed();
  /// The host is about to show this item's submenu, or has just done so.
  void submenuOpening(std::shared_ptr<const MenuItem> item);
  void chosen(std::shared_ptr<const MenuItem> item);

 private:
  friend struct HostMenuVtable;

  bool announced(bool isAnswered);
  void open();
  void close();
  void handle(int id, std::string_view event);
  void announceSubmenu(int id);
  void tell(const ExportedMenu::Change& change);
  void tellLayout();
  void tellHeldBack();

  sd_bus* bus_;
  ExportedMenu& menu_;
  HostMenuTimes times_;
  std::shared_ptr<const Menu> waiting_;  // shown once the menu has closed
  std::uint32_t revision_ = 1;
  std::uint32_t readRevision_ = 0;  // the last one that was read
  bool isAnswering_ = false;        // a new layout is told in the answer that is being made
  bool signalIsDue_ = false;        // a new layout was told in an answer only, not by a signal
  std::set<int> heldBack_;          // items whose new labels wait until the menu has closed
  bool isOpening_ = false;
  bool isOpen_ = false;
  bool hostSaysClosed_ = false;  // this host has reported a closing before
  QElapsedTimer sinceOpening_;
  QTimer longEnough_;
  BusSlot object_;
};
