#include "frontends/qt/menu_window.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>
#include <utility>

#include "frontends/qt/pictures.h"
#include "frontends/qt/strip_widget.h"
#include "frontends/qt/x11/window_hints.h"

namespace {

constexpr int kExposurePatience = 2000;  // milliseconds

}  // namespace

MenuWindow::MenuWindow()
    // Always on top and not to be minimized, because it is in no task bar where it could be found
    // again.
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint),
      strip_(new StripWidget),
      button_(new QPushButton) {
  setWindowIcon(badgeIcon());
  button_->setDefault(true);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(4, 4, 4, 8);
  column->setSpacing(4);
  column->setSizeConstraint(QLayout::SetFixedSize);
  column->addWidget(strip_);
  column->addWidget(button_, 0, Qt::AlignHCenter);

  connect(button_, &QPushButton::clicked, this, &MenuWindow::menuRequested);
  const auto* settings = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma), this);
  connect(settings, &QShortcut::activated, this, &MenuWindow::settingsRequested);

  create();
  keepOffTaskbar(*this);
  keepOnAllDesktops(*this);
  windowHandle()->installEventFilter(this);

  // A window manager that is just starting may miss the request to show the window.
  neverExposed_.setSingleShot(true);
  neverExposed_.setInterval(kExposurePatience);
  connect(&neverExposed_, &QTimer::timeout, this, [this] {
    if (!isVisible() || windowHandle()->isExposed()) return;
    hide();
    show();
  });
}

void MenuWindow::setTitle(const QString& title) {
  setWindowTitle(title);
  button_->setText(title);
}

void MenuWindow::setToolTipText(const QString& plainHtml) {
  button_->setToolTip(plainHtml);
}

void MenuWindow::setStrip(std::shared_ptr<const MemoryPressureView> strip) {
  strip_->setStrip(std::move(strip));
}

QPoint MenuWindow::menuPosition() const {
  return mapToGlobal(QPoint(0, button_->geometry().bottom()));
}

void MenuWindow::whenExposed(std::function<void()> work) {
  if (windowHandle()->isExposed()) {
    work();
  } else {
    onExposed_ = std::move(work);
  }
}

bool MenuWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Expose && windowHandle()->isExposed()) {
    neverExposed_.stop();
    // After the window has been drawn for the first time.
    if (onExposed_) QTimer::singleShot(0, this, std::exchange(onExposed_, nullptr));
  }
  return QWidget::eventFilter(watched, event);
}

void MenuWindow::showEvent(QShowEvent* event) {
  neverExposed_.start();
  QWidget::showEvent(event);
}

/// Some window managers minimize it anyway; show it again.
void MenuWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && isMinimized()) {
    QTimer::singleShot(0, this, &QWidget::showNormal);
  }
  QWidget::changeEvent(event);
}

void MenuWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  Q_EMIT dismissed();
}
