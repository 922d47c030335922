#pragma once

#include <QByteArray>
#include <QObject>
#include <QPoint>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "frontends/qt/icon_or_window_choice.h"
#include "frontends/qt/x11/embedded_tray_watch.h"
#include "ui/memory_pressure_view.h"

class MenuWindow;
class QSystemTrayIcon;
class QWidget;

/// Makes sure that the program is always present on screen: by the icon in whatever tray there is,
/// else by the small window.
class IconOrWindow : public QObject {
  Q_OBJECT

 public:
  /// How long a tray host may take to answer before the window is shown.
  static constexpr int kPatience = 1000;  // milliseconds

  IconOrWindow();
  ~IconOrWindow() override;

  /// Tells what is known about a tray host.
  void setHost(bool decided, bool showsIcon);

  void setTitle(const std::string& title);
  void setToolTip(const std::string& toolTip);
  void setStrip(std::shared_ptr<const MemoryPressureView> strip);

  /// Calls `open` with the place for a popup menu: its parent, if it needs one, and its top left
  /// corner. It may be called later, when there is such a place.
  using OpenPopup = std::function<void(QWidget* parent, QPoint position)>;
  /// `icon` is where the icon is on the screen; null where nobody knows.
  void providePlace(const OpenPopup& open, QPoint icon = {});
  /// The same, always in the window.
  void provideWindow(const OpenPopup& open, QPoint icon = {});
  /// The token (xdg-activation) by which the window asks for the keyboard when it is next provided.
  void setActivationToken(const QByteArray& token) { activationToken_ = token; }
  /// The popup has closed: its place is no longer needed.
  void releasePlace();
  /// Brings the window to the front, where it replaces the icon. Returns whether the user had put
  /// it away.
  bool bringBack();
  /// Marks the window in the task bar, where it replaces the icon.
  void askForAttention();

 Q_SIGNALS:
  void menuRequested();
  void settingsRequested();
  /// The place that was provided for a popup is about to disappear.
  void placeLost();

 private:
  void update();
  void showEmbeddedIcon();
  MenuWindow& window();

  PresenceFacts facts_;
  PresenceKind kind_ = PresenceKind::undecided;
  EmbeddedTrayWatch embeddingTray_;
  QTimer patience_;
  std::unique_ptr<QSystemTrayIcon> embeddedIcon_;
  std::unique_ptr<MenuWindow> window_;
  QByteArray activationToken_;
  std::string title_;
  std::string toolTip_;
  std::shared_ptr<const MemoryPressureView> strip_;
};
