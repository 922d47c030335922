#include "frontends/qt/icon_or_window.h"

#include <QApplication>
#include <QCursor>
#include <QSystemTrayIcon>
#include <utility>

#include "frontends/qt/menu_label.h"
#include "frontends/qt/menu_window.h"
#include "frontends/qt/pictures.h"
#include "frontends/qt/qt_text.h"
#include "frontends/qt/wayland/menu_surface.h"

IconOrWindow::IconOrWindow() {
  facts_.embeddingTray = embeddingTray_.trayIsThere();
  // Handled later, because in the middle of an event windows must not be destroyed.
  connect(
      &embeddingTray_, &EmbeddedTrayWatch::changed, this,
      [this] {
        facts_.embeddingTray = embeddingTray_.trayIsThere();
        update();
      },
      Qt::QueuedConnection);
  connect(&patience_, &QTimer::timeout, this, [this] {
    facts_.patienceIsOver = true;
    update();
  });
  patience_.setSingleShot(true);
  patience_.start(kPatience);
}

IconOrWindow::~IconOrWindow() = default;

void IconOrWindow::setHost(bool decided, bool showsIcon) {
  facts_.hostDecided = decided;
  facts_.hostShowsIcon = showsIcon;
  update();
}

void IconOrWindow::update() {
  const PresenceKind kind = choosePresence(facts_);
  if (kind == kind_) return;
  Q_EMIT placeLost();
  kind_ = kind;
  if (kind == PresenceKind::embeddedIcon) {
    showEmbeddedIcon();
  } else {
    embeddedIcon_.reset();
  }
  if (kind == PresenceKind::window) {
    // It may be visible already, as the parent of a menu that is closing.
    window().hide();
    window().setReplacesIcon(true);
    window().show();
  } else if (window_) {
    window_->hide();
  }
}

void IconOrWindow::showEmbeddedIcon() {
  embeddedIcon_ = std::make_unique<QSystemTrayIcon>(badgeIcon());
  embeddedIcon_->setToolTip(plainToolTip(toolTip_));
  connect(embeddedIcon_.get(), &QSystemTrayIcon::activated, this, &IconOrWindow::menuRequested);
  embeddedIcon_->show();
}

MenuWindow& IconOrWindow::window() {
  if (window_) return *window_;
  window_ = std::make_unique<MenuWindow>();
  window_->setTitle(toQString(title_));
  window_->setToolTipText(toolTip_);
  window_->setStrip(strip_);
  connect(window_.get(), &MenuWindow::menuRequested, this, &IconOrWindow::menuRequested);
  connect(window_.get(), &MenuWindow::settingsRequested, this, &IconOrWindow::settingsRequested);
  return *window_;
}

void IconOrWindow::setTitle(const std::string& title) {
  title_ = title;
  if (window_) window_->setTitle(toQString(title));
}

void IconOrWindow::setToolTip(const std::string& toolTip) {
  toolTip_ = toolTip;
  if (embeddedIcon_) embeddedIcon_->setToolTip(plainToolTip(toolTip));
  if (window_) window_->setToolTipText(toolTip);
}

void IconOrWindow::setStrip(std::shared_ptr<const MemoryPressureView> strip) {
  strip_ = std::move(strip);
  if (window_) window_->setStrip(strip_);
}

void IconOrWindow::providePlace(const OpenPopup& open, QPoint icon) {
  // A Wayland client can't place a menu without a window.
  if (kind_ != PresenceKind::window && !isOnWayland()) {
    open(nullptr, QCursor::pos());
  } else {
    provideWindow(open, icon);
  }
}

void IconOrWindow::provideWindow(const OpenPopup& open, QPoint icon) {
  window().setReplacesIcon(kind_ == PresenceKind::window);
  if (!window().isVisible()) window().showBeside(icon);
  if (!activationToken_.isEmpty()) {
    // Qt takes the token from this variable when it activates a window on Wayland.
    qputenv("XDG_ACTIVATION_TOKEN", activationToken_);
    activationToken_.clear();
    window().activateWindow();
    qunsetenv("XDG_ACTIVATION_TOKEN");
  }
  window().whenPlaced([this, open] { open(window_.get(), window_->menuPosition()); });
}

bool IconOrWindow::bringBack() {
  if (kind_ != PresenceKind::window) return false;
  const bool wasAway = !window().isVisible();
  window().show();
  window().setWindowState(window().windowState() & ~Qt::WindowMinimized);
  window().raise();
  window().activateWindow();
  return wasAway;
}

void IconOrWindow::askForAttention() {
  if (kind_ == PresenceKind::window) QApplication::alert(&window());
}

void IconOrWindow::releasePlace() {
  if (window_ && kind_ != PresenceKind::window) window_->hide();
}
