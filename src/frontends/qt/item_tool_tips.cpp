#include "frontends/qt/item_tool_tips.h"

#include <QMenu>
#include <QToolTip>

ItemToolTips::ItemToolTips() {
  timer_.setSingleShot(true);
  timer_.setInterval(kDelay);
  connect(&timer_, &QTimer::timeout, this, &ItemToolTips::show);
}

void ItemToolTips::watch(QMenu& menu) {
  QMenu* minded = &menu;
  connect(minded, &QMenu::hovered, this, [this, minded](QAction* action) {
    // A menu also emits the signals of its submenus; ignore those.
    if (!minded->actions().contains(action)) return;
    if (action != action_) QToolTip::hideText();
    menu_ = minded;
    action_ = action;
    timer_.start();
  });
  connect(minded, &QMenu::aboutToHide, this, [this, minded] {
    if (menu_ == minded) timer_.stop();
  });
}

void ItemToolTips::show() {
  if (!menu_ || !menu_->isVisible() || menu_->activeAction() != action_) return;
  const QString toolTip = action_->data().toString();
  if (toolTip.isEmpty()) return;
  const QRect place = menu_->actionGeometry(action_);
  QToolTip::showText(menu_->mapToGlobal(place.bottomLeft()), toolTip, menu_, place);
}
