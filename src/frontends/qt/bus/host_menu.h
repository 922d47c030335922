#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <string_view>

#include "frontends/qt/exported_menu.h"
#include "platform/linux/sd_bus_ptr.h"
#include "ui/memory_pressure_view.h"
#include "ui/menu.h"

/// Serves the menu that tray hosts draw themselves (com.canonical.dbusmenu).
///
/// A host says when it opens the menu, and not always when it closes it. From the opening
/// until it closes, an item is chosen or, with a host that never said so, half a minute is
/// over, nothing but the strip's label changes in it.
class HostMenu : public QObject {
  Q_OBJECT

 public:
  static constexpr const char* kPath = "/MenuBar";
  static constexpr int kLongestTracking = 30000;  // milliseconds

  HostMenu(sd_bus* bus, ExportedMenu& menu, int longestTracking = kLongestTracking);

  void show(std::shared_ptr<const Menu> menu);
  /// Who will ask for it. Another one has not opened it yet.
  void setHost(TrayHostKind host);
  /// The screen has changed: what was open on it is not any more.
  void setRoom(ShortMenu::Room room);
  void showStrip(const MemoryPressureView& strip);

  /// The menu cannot be open any more: another one has opened.
  void assumeClosed();
  /// The host has gone, and the menu with it. The next one may never say that it closes it.
  void hostGone();

 Q_SIGNALS:
  /// The host is about to show the menu: the last moment to change its items.
  void opening();
  void closed();
  void chosen(std::shared_ptr<const MenuItem> item);

 private:
  friend struct HostMenuVtable;

  bool open();
  void close();
  void handle(int id, std::string_view event);
  void tell(const ExportedMenu::Change& change);

  sd_bus* bus_;
  ExportedMenu& menu_;
  std::shared_ptr<const Menu> waiting_;  // what is to be shown once the menu has closed
  std::uint32_t revision_ = 1;
  bool isOpen_ = false;
  bool hostSaysClosed_ = false;  // so it can be trusted to
  QTimer longEnough_;
  BusSlot object_;
};
