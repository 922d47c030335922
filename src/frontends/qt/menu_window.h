#pragma once

#include <QPoint>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

#include "ui/memory_pressure_view.h"

class QPushButton;
class StripWidget;

/// The small window that replaces the icon where there is no tray, and that the menu is attached
/// to where a menu needs a window (Wayland): the live strip above a button that opens the menu.
class MenuWindow : public QWidget {
  Q_OBJECT

 public:
  MenuWindow();

  /// The status item's title: the window's and the button's.
  void setTitle(const QString& title);
  void setToolTipText(const QString& plainHtml);
  void setStrip(std::shared_ptr<const MemoryPressureView> strip);

  /// The top left corner of a menu below the button, in screen coordinates.
  QPoint menuPosition() const;

  /// Runs `work` when the window is on screen and can hold a menu: now, or later.
  void whenExposed(std::function<void()> work);

 Q_SIGNALS:
  void menuRequested();
  void settingsRequested();
  /// The user closed the window.
  void dismissed();

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  StripWidget* strip_;
  QPushButton* button_;
  std::function<void()> onExposed_;
  QTimer neverExposed_;
};
