#include "frontends/qt/qt_front_end.h"

#include <QApplication>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <utility>

#include "frontends/qt/accessible_menu.h"
#include "frontends/qt/alert_dialog.h"
#include "frontends/qt/desktop_colors.h"
#include "frontends/qt/popup_menu.h"
#include "frontends/qt/qt_scheduled_work.h"
#include "frontends/qt/wayland/menu_surface.h"
#include "frontends/qt/wayland/plasma_surface.h"
#include "frontends/qt/x11/window_hints.h"
#include "ui/short_menu.h"
#include "ui/strip_text.h"

namespace {

// In milliseconds. At login a bus may be a little late; one that is gone may stay away for long.
constexpr int kSoonestReconnect = 1000;
constexpr int kLatestReconnect = 30000;
constexpr std::chrono::milliseconds kReconnectPatience{300};

void bringToFront(QWidget& window) {
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace

void MenuTracking::begin(Shown menu) {
  if (delegate_ == nullptr) return;
  end(shown_);
  delegate_->menuNeedsUpdate();
  shown_ = menu;
  delegate_->menuWillOpen();
}

void MenuTracking::end(Shown menu) {
  if (shown_ == Shown::none || shown_ != menu) return;
  shown_ = Shown::none;
  if (delegate_ != nullptr) delegate_->menuDidClose();
}

QtFrontEnd::QtFrontEnd(NamedBus bus, std::vector<SettingsView::Line> settings)
    : settingsLines_(std::move(settings)), menu_(std::make_shared<const Menu>()) {
  makeMenusAccessible();
  // The program goes on without a window; only terminate() ends it.
  QApplication::setQuitOnLastWindowClosed(false);
  connect(&presence_, &IconOrWindow::menuRequested, this, [this] { togglePopup({}); });
  connect(&presence_, &IconOrWindow::settingsRequested, this, &QtFrontEnd::showSettings);
  connect(&presence_, &IconOrWindow::placeLost, this, &QtFrontEnd::cancelTracking);
  connect(qApp, &QGuiApplication::primaryScreenChanged, this, &QtFrontEnd::noteScreen);
  noteScreen();
  connect(&kdeColors_, &KdeColorsWatch::changed, this, &QtFrontEnd::showColors);
  if (kdeColors_.palette()) showColors();
  reconnect_.setSingleShot(true);
  connect(&reconnect_, &QTimer::timeout, this, &QtFrontEnd::reconnect);
  if (bus.bus) {
    attach(std::move(bus));
  } else {
    busLost();
  }
}

QtFrontEnd::~QtFrontEnd() {
  delete popup_;
  delete settings_;
}

void QtFrontEnd::reportTo(MenuDelegate* delegate) {
  delegate_ = delegate;
  tracking_.reportTo(delegate);
}

void QtFrontEnd::attach(NamedBus bus) {
  auto iconBus = SessionBus::open(kReconnectPatience);
  if (!iconBus) return busLost();
  connection_ = std::make_unique<TrayConnection>(std::move(bus), std::move(iconBus), exportedMenu_);
  connection_->icon.setToolTip(toolTip_);
  connection_->icon.setNeedsAttention(needsAttention_);
  connection_->menu.show(menu_);
  showStrip();
  const TrayHostWatch& hosts = connection_->hosts;
  connect(&hosts, &TrayHostWatch::changed, this, [this, &hosts] {
    connection_->menu.setHost(hosts.hostKind());
    presence_.setHost(hosts.decided(), hosts.hostShowsIcon());
    if (!hosts.hostShowsIcon()) connection_->menu.hostGone();
  });
  connect(&hosts, &TrayHostWatch::watcherChanged, &connection_->menu, &HostMenu::hostGone);
  for (const SessionBus* lost : {connection_->bus.get(), connection_->iconBus.get()}) {
    connect(lost, &SessionBus::lost, this, &QtFrontEnd::busLost, Qt::QueuedConnection);
  }
  connect(
      connection_->name.get(), &InstanceName::activated, this,
      [this] {
        if (!presence_.bringBack()) showSettings();
      },
      Qt::QueuedConnection);
  connect(&connection_->appearance, &AppearanceWatch::changed, this, &QtFrontEnd::showColors);
  connect(&connection_->notifications, &Notifications::chosen, this, &QtFrontEnd::openWarned,
          Qt::QueuedConnection);
  connect(&connection_->notifications, &Notifications::tokenProvided, &presence_,
          &IconOrWindow::setActivationToken);
  connect(&connection_->icon, &StatusNotifierItem::activated, this, &QtFrontEnd::togglePopup,
          Qt::QueuedConnection);
  connect(&connection_->icon, &StatusNotifierItem::tokenProvided, &presence_,
          &IconOrWindow::setActivationToken);
  connect(&connection_->menu, &HostMenu::opening, this, [this] {
    if (popup_) popup_->close();
    tracking_.begin(MenuTracking::Shown::hostMenu);
  });
  connect(&connection_->menu, &HostMenu::closed, this,
          [this] { tracking_.end(MenuTracking::Shown::hostMenu); });
  connect(&connection_->menu, &HostMenu::submenuOpening, this, &QtFrontEnd::reportSubmenu);
  connect(&connection_->menu, &HostMenu::chosen, this, &QtFrontEnd::choose, Qt::QueuedConnection);
}

/// The panel, and so the menu that the host shows, is on the first screen.
void QtFrontEnd::noteScreen() {
  disconnect(screenSize_);
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return;
  screenSize_ = connect(screen, &QScreen::geometryChanged, this, &QtFrontEnd::noteScreen);
  const int lines = linesOf(*screen);
  exportedMenu_.setMostUnscrolled(
      ExportedMenu::mostUnscrolled(lines, qgetenv("XDG_CURRENT_DESKTOP")));
  const ShortMenu::Room room = ShortMenu::roomOn(lines);
  if (connection_) {
    connection_->menu.setRoom(room);
  } else {
    exportedMenu_.setRoom(room);
  }
}

void QtFrontEnd::showColors() {
  if (connection_) appearance_ = connection_->appearance.appearance();
  useColors(appearance_, kdeColors_.palette());
}

void QtFrontEnd::busLost() {
  tracking_.end(MenuTracking::Shown::hostMenu);
  connection_.reset();
  presence_.setHost(true, false);
  reconnect_.start(kSoonestReconnect);
}

void QtFrontEnd::reconnect() {
  NamedBus again{SessionBus::open(kReconnectPatience), nullptr};
  if (!again.bus) {
    reconnect_.start(std::min(2 * reconnect_.interval(), kLatestReconnect));
    return;
  }
  again.name = std::make_unique<InstanceName>(*again.bus);
  again.name->claimLater();
  attach(std::move(again));
}

void QtFrontEnd::setTitle(const std::string& title) {
  title_ = title;
  presence_.setTitle(title);
}

void QtFrontEnd::setToolTip(const std::string& toolTip) {
  toolTip_ = toolTip;
  presence_.setToolTip(toolTip);
  if (connection_) connection_->icon.setToolTip(toolTip);
}

void QtFrontEnd::setWarning(const std::optional<MemoryWarning>& warning) {
  needsAttention_ = warning.has_value();
  if (connection_) connection_->icon.setNeedsAttention(needsAttention_);
  if (!warning) return;
  warned_ = warning->process;
  presence_.askForAttention();
  if (connection_) connection_->notifications.show(warning->title, warning->text);
}

void QtFrontEnd::menuRebuilt(std::shared_ptr<const Menu> menu) {
  menu_ = std::move(menu);
  if (popup_ && !popupIsApart_) popup_->setMenu(menu_);
  if (connection_) connection_->menu.show(menu_);
  showStrip();
}

void QtFrontEnd::stripChanged(const MemoryPressureView&) {
  if (popup_) popup_->refreshStrip();
  showStrip();
}

void QtFrontEnd::titlesChanged() {
  if (popup_) popup_->refreshTitles();
  if (connection_) connection_->menu.showTitles();
}

void QtFrontEnd::alertChanged(const Alert& alert) {
  if (alert_) alert_->setText(alert.informativeText);
}

void QtFrontEnd::reportSubmenu(const std::shared_ptr<const MenuItem>& row) {
  if (delegate_ != nullptr) delegate_->submenuWillOpen(*row);
}

/// Updates the strip everywhere except in the popup, which does it with its menu.
void QtFrontEnd::showStrip() {
  const auto strip = stripOf(*menu_);
  presence_.setStrip(strip);
  if (!strip || !connection_) return;
  connection_->menu.showStrip(*strip);
  connection_->icon.setTitle(title_ + " — " + stripDescription(*strip));
}

void QtFrontEnd::cancelTracking() {
  if (popup_) popup_->close();
}

int QtFrontEnd::runModal(const Alert& alert) {
  cancelTracking();
  AlertDialog dialog(alert);
  alert_ = &dialog;
  setInTaskbar(dialog, false);
  bringToFront(dialog);
  const auto surface = PlasmaSurface::of(*dialog.windowHandle(), std::nullopt);
  dialog.exec();
  return dialog.answer();
}

std::shared_ptr<ScheduledWork> QtFrontEnd::every(double seconds, std::function<void()> work) {
  return scheduleWork(*this, seconds, true, std::move(work));
}

std::shared_ptr<ScheduledWork> QtFrontEnd::after(double seconds, std::function<void()> work) {
  return scheduleWork(*this, seconds, false, std::move(work));
}

void QtFrontEnd::terminate() {
  QApplication::exit(0);
}

void QtFrontEnd::showSettings() {
  if (!settings_) settings_ = new SettingsWindow(settingsLines_);
  bringToFront(*settings_);
}

void QtFrontEnd::togglePopup(QPoint icon) {
  if (alert_) {
    bringToFront(*alert_);
  } else if (popup_) {
    popup_->close();
  } else {
    presence_.providePlace(
        [this](QWidget* parent, QPoint position) { openPopup(nullptr, parent, position); }, icon);
  }
}

void QtFrontEnd::openPopup(const std::shared_ptr<const Menu>& apart, QWidget* parent,
                           QPoint position) {
  if (alert_ || popup_) return;
  if (connection_) {
    connection_->icon.setQuiet(true);
    connection_->menu.assumeClosed();
  }
  popup_ = new PopupMenu(parent);
  popupIsApart_ = apart != nullptr;
  tracking_.begin(MenuTracking::Shown::popup);
  popup_->setMenu(popupIsApart_ ? apart : menu_);
  connect(popup_, &PopupMenu::chosen, this, &QtFrontEnd::choose, Qt::QueuedConnection);
  connect(popup_, &PopupMenu::submenuOpening, this, &QtFrontEnd::reportSubmenu);
  connect(popup_, &PopupMenu::settingsRequested, this, &QtFrontEnd::showSettings,
          Qt::QueuedConnection);
  // Queued, so that the closing is reported before the chosen item acts.
  connect(popup_, &QMenu::aboutToHide, this, &QtFrontEnd::popupClosed, Qt::QueuedConnection);
  popup_->openAt(position);
}

void QtFrontEnd::popupClosed() {
  if (popup_) popup_->deleteLater();
  popup_.clear();
  if (connection_) connection_->icon.setQuiet(false);
  presence_.releasePlace();
  tracking_.end(MenuTracking::Shown::popup);
}

void QtFrontEnd::choose(std::shared_ptr<const MenuItem> item) {
  if (delegate_ == nullptr) return;
  // A host's menu can be used while an alert is open. On a Mac what is chosen then waits for the
  // alert's end, as AppKit's run loop has it (appkit/menu_target.h). Here it is dropped: the alert
  // comes to the front instead, and after its answer the user may mean something else. Quit counts
  // at once.
  if (alert_ && item->action != Action::quitApp) {
    bringToFront(*alert_);
    return;
  }
  if (item->action == Action::openRow || item->action == Action::openMenu) {
    openInstead(item);
  } else {
    delegate_->perform(std::move(item));
  }
}

/// Opens what the short menu leaves out.
void QtFrontEnd::openInstead(const std::shared_ptr<const MenuItem>& item) {
  if (popup_) popup_->close();
  const std::shared_ptr<const Menu> apart =
      item->action == Action::openRow ? std::make_shared<const Menu>(ShortMenu::ofRow(*item))
                                      : nullptr;
  const auto open = [this, apart, item](QWidget* parent, QPoint position) {
    openPopup(apart, parent, position);
    if (apart) reportSubmenu(item);
  };
  // Later, when the popup that is closing has gone.
  QMetaObject::invokeMethod(
      this,
      [this, apart, open] { apart ? presence_.providePlace(open) : presence_.provideWindow(open); },
      Qt::QueuedConnection);
}

/// Opens the row of the process that the last warning was about as a menu of its own, or the whole
/// menu where that row is gone.
void QtFrontEnd::openWarned() {
  if (alert_) return bringToFront(*alert_);
  if (popup_) popup_->close();
  // Later, when the popup that is closing has gone.
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (delegate_ != nullptr) delegate_->menuNeedsUpdate();
        auto own = warned_ ? ShortMenu::ofProcess(*menu_, *warned_) : std::nullopt;
        const auto apart = own ? std::make_shared<const Menu>(std::move(*own)) : nullptr;
        presence_.provideWindow([this, apart](QWidget* parent, QPoint position) {
          openPopup(apart, parent, position);
        });
      },
      Qt::QueuedConnection);
}
