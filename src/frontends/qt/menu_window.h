#pragma once

#include <QPoint>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "frontends/qt/wayland/plasma_surface.h"
#include "ui/memory_pressure_view.h"

class QLabel;
class QPushButton;
class StripWidget;

/// The small window that replaces the icon where there is no tray, and that the menu is attached
/// to where a menu needs a window (Wayland): the live strip above a button that opens the menu.
///
/// As a replacement it is a window like any other, in the task bar. Closing it only hides it, and
/// it says how it comes back. Attached to a menu it is in no task bar and stays as long as the
/// menu.
class MenuWindow : public QWidget {
  Q_OBJECT

 public:
  MenuWindow();

  /// Whether it replaces the icon, from the next time that it is shown.
  void setReplacesIcon(bool replaces);

  /// Shows it, where it does not replace the icon: in no task bar and, where the compositor can be
  /// told so, beside the icon, which is at that place of the screen in pixels (null: nobody knows).
  void showBeside(QPoint icon);

  /// The status item's title: the window's and the button's.
  void setTitle(const QString& title);
  void setToolTipText(const std::string& text);
  void setStrip(std::shared_ptr<const MemoryPressureView> strip);

  /// The top left corner of a menu below the button, in screen coordinates.
  QPoint menuPosition() const;

  /// Runs `work` when the window is on screen, at its place, and can hold a menu: now, or later.
  void whenPlaced(std::function<void()> work);

 Q_SIGNALS:
  void menuRequested();
  void settingsRequested();

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  StripWidget* strip_;
  QPushButton* button_;
  QLabel* wayBack_;
  void placed();

  std::function<void()> onPlaced_;
  QTimer neverExposed_;
  QTimer neverActive_;
  std::unique_ptr<PlasmaSurface> plasmaSurface_;
  std::optional<QPoint> corner_;  // where the compositor was told to place it
};
