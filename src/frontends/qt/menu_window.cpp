#include "frontends/qt/menu_window.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>
#include <utility>

#include "frontends/qt/menu_label.h"
#include "frontends/qt/pictures.h"
#include "frontends/qt/qt_text.h"
#include "frontends/qt/screen_place.h"
#include "frontends/qt/strip_widget.h"
#include "frontends/qt/wayland/menu_surface.h"
#include "frontends/qt/x11/window_hints.h"

namespace {

constexpr int kExposurePatience = 2000;  // milliseconds
constexpr int kPlacingPatience = 2000;   // milliseconds
constexpr const char* kWayBack =
    "Closing this window puts it away. To get it back, start Vorda again.";

/// `icon` is in pixels, as Plasma tells it; windows are placed in points.
std::optional<QPoint> cornerBesideIcon(QPoint icon, QSize window) {
  if (icon.isNull()) return std::nullopt;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QPoint place = icon / screen->devicePixelRatio();
    if (screen->geometry().contains(place)) {
      return cornerBeside(place, window, screen->geometry());
    }
  }
  return std::nullopt;
}

}  // namespace

MenuWindow::MenuWindow()
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint),
      strip_(new StripWidget),
      button_(new QPushButton),
      wayBack_(new QLabel(kWayBack)) {
  setWindowIcon(badgeIcon());
  wayBack_->setTextFormat(Qt::PlainText);
  wayBack_->setWordWrap(true);
  wayBack_->setAlignment(Qt::AlignHCenter);
  QFont small = wayBack_->font();
  small.setPointSizeF(small.pointSizeF() * 0.85);
  wayBack_->setFont(small);
  button_->setDefault(true);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(4, 4, 4, 8);
  column->setSpacing(4);
  column->setSizeConstraint(QLayout::SetFixedSize);
  column->addWidget(strip_);
  column->addWidget(button_, 0, Qt::AlignHCenter);
  column->addWidget(wayBack_);

  connect(button_, &QPushButton::clicked, this, &MenuWindow::menuRequested);
  const auto* settings = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma), this);
  connect(settings, &QShortcut::activated, this, &MenuWindow::settingsRequested);

  create();
  setReplacesIcon(true);
  windowHandle()->installEventFilter(this);

  // A window manager that is just starting may miss the request to show the window.
  neverExposed_.setSingleShot(true);
  neverExposed_.setInterval(kExposurePatience);
  connect(&neverExposed_, &QTimer::timeout, this, [this] {
    if (!isVisible() || windowHandle()->isExposed()) return;
    hide();
    show();
  });
  neverActive_.setSingleShot(true);
  connect(&neverActive_, &QTimer::timeout, this, &MenuWindow::placed);
}

void MenuWindow::setReplacesIcon(bool replaces) {
  wayBack_->setVisible(replaces);
}

void MenuWindow::showBeside(QPoint icon) {
  show();
  if (!wayBack_->isHidden()) return;
  corner_ = cornerBesideIcon(icon, frameGeometry().size());
  plasmaSurface_ = PlasmaSurface::of(*windowHandle(), corner_);
  if (plasmaSurface_ == nullptr) corner_.reset();
}

void MenuWindow::setTitle(const QString& title) {
  setWindowTitle(title);
  button_->setText(title);
}

void MenuWindow::setToolTipText(const std::string& text) {
  button_->setToolTip(plainToolTip(text));
  // Else a screen reader would read the tooltip's HTML.
  button_->setAccessibleDescription(toQString(text));
}

void MenuWindow::setStrip(std::shared_ptr<const MemoryPressureView> strip) {
  strip_->setStrip(std::move(strip));
}

QPoint MenuWindow::menuPosition() const {
  return mapToGlobal(QPoint(0, button_->geometry().bottom()));
}

void MenuWindow::whenPlaced(std::function<void()> work) {
  // Nobody else tells Qt where a window is on Wayland (display.cpp), and submenus open where Qt
  // sees room beside their menu. Each time: the compositor's answers move it back to the top left.
  onPlaced_ = [this, work = std::move(work)] {
    if (isOnWayland()) move(corner_.value_or(likelyCorner(size(), screen()->geometry())));
    work();
  };
  if (windowHandle()->isExposed()) placed();
}

void MenuWindow::placed() {
  neverActive_.stop();
  if (auto work = std::exchange(onPlaced_, nullptr)) work();
}

bool MenuWindow::eventFilter(QObject*, QEvent* event) {
  if (!windowHandle()->isExposed()) return false;
  if (event->type() == QEvent::Expose) {
    neverExposed_.stop();
    // GNOME's compositor places a window when it has its first picture, and until then keeps a menu
    // on the screen as if the window were at the top left. Once it is active it has its place.
    const bool mayMove = isOnWayland() && !corner_ && !windowHandle()->isActive();
    // After the window has been drawn for the first time.
    if (onPlaced_) neverActive_.start(mayMove ? kPlacingPatience : 0);
  } else if (event->type() == QEvent::FocusIn) {
    // An active window has another frame: a menu that opened before the compositor has shown that
    // one would be a pixel or two too low.
    if (onPlaced_) QTimer::singleShot(0, windowHandle(), &QWindow::requestUpdate);
  } else if (event->type() == QEvent::UpdateRequest && windowHandle()->isActive()) {
    placed();
  }
  return false;
}

void MenuWindow::showEvent(QShowEvent* event) {
  // Each time: window managers forget it when a window is hidden.
  setInTaskbar(*this, !wayBack_->isHidden());
  keepOnAllDesktops(*this);
  neverExposed_.start();
  QWidget::showEvent(event);
}
