#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frontends/qt/appearance.h"
#include "frontends/qt/bus/tray_connection.h"
#include "frontends/qt/exported_menu.h"
#include "frontends/qt/icon_or_window.h"
#include "frontends/qt/kde_colors.h"
#include "frontends/qt/settings_window.h"
#include "ui/front_end.h"
#include "ui/settings_layout.h"

class AlertDialog;
class PopupMenu;
class QWidget;

/// Keeps track of which menu is open, and reports to the delegate. For the delegate there is only
/// one menu, though two toolkits may show it; when one opens, the other counts as closed.
class MenuTracking {
 public:
  enum class Shown { none, popup, hostMenu };

  void reportTo(MenuDelegate* delegate) { delegate_ = delegate; }

  /// A menu is about to open. Brings its items up to date.
  void begin(Shown menu);

  /// That menu has closed. Does nothing if it was not open.
  void end(Shown menu);

 private:
  MenuDelegate* delegate_ = nullptr;
  Shown shown_ = Shown::none;
};

/// The desktop: an icon in the tray with a tooltip and a menu, alerts, the Settings window.
/// Needs a QApplication.
class QtFrontEnd : public QObject, public FrontEnd {
  Q_OBJECT

 public:
  /// `bus` may be empty: then there is no tray host until a bus is found later. `settings` is the
  /// text of the Settings window.
  QtFrontEnd(NamedBus bus, std::vector<SettingsView::Line> settings);
  ~QtFrontEnd() override;

  /// Sets the delegate that is told of the menu from now on; nullptr for none. Has to be set to
  /// nullptr before the delegate is destroyed.
  void reportTo(MenuDelegate* delegate);

  void setTitle(const std::string& title) override;
  void setToolTip(const std::string& toolTip) override;
  void menuRebuilt(std::shared_ptr<const Menu> menu) override;
  void stripChanged(const MemoryPressureView& strip) override;
  void titlesChanged() override;
  void alertChanged(const Alert& alert) override;
  void setNotice(const std::string&) override {}  // the submenu says it as well
  void setWarning(const std::optional<MemoryWarning>& warning) override;
  void cancelTracking() override;
  int runModal(const Alert& alert) override;
  std::shared_ptr<ScheduledWork> every(double seconds, std::function<void()> work) override;
  std::shared_ptr<ScheduledWork> after(double seconds, std::function<void()> work) override;
  void terminate() override;

  void showSettings();

 private:
  void attach(NamedBus bus);
  void busLost();
  void reconnect();
  /// `icon` is where it was clicked; null where nobody knows.
  void togglePopup(QPoint icon);
  /// Opens `apart` as a menu or, for nullptr, the whole menu, which is then updated by refreshes.
  void openPopup(const std::shared_ptr<const Menu>& apart, QWidget* parent, QPoint position);
  void openInstead(const std::shared_ptr<const MenuItem>& item);
  void openWarned();
  void popupClosed();
  void choose(std::shared_ptr<const MenuItem> item);
  void reportSubmenu(const std::shared_ptr<const MenuItem>& row);
  void showStrip();
  void noteScreen();
  void showColors();

  std::vector<SettingsView::Line> settingsLines_;
  MenuDelegate* delegate_ = nullptr;
  MenuTracking tracking_;
  std::string title_;
  std::string toolTip_;
  std::shared_ptr<const Menu> menu_;
  ExportedMenu exportedMenu_;
  std::unique_ptr<TrayConnection> connection_;
  KdeColorsWatch kdeColors_;
  Appearance appearance_;  // as the portal said last
  IconOrWindow presence_;
  QPointer<PopupMenu> popup_;
  bool popupIsApart_ = false;  // it shows `apart`, not menu_
  bool needsAttention_ = false;
  std::optional<ProcessReference> warned_;  // whom the last warning was about
  QPointer<AlertDialog> alert_;
  QPointer<SettingsWindow> settings_;
  QTimer reconnect_;
  QMetaObject::Connection screenSize_;
};
