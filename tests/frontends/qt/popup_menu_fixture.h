#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <memory>
#include <string>
#include <vector>

#include "frontends/qt/event_loop.h"
#include "frontends/qt/menu_examples.h"
#include "frontends/qt/popup_menu.h"

/// The example's menu, used with keys and pointer.
class PopupMenuTest : public testing::Test {
 protected:
  PopupMenuTest() {
    QObject::connect(
        &menu, &PopupMenu::chosen,
        [this](const std::shared_ptr<const MenuItem>& item) { chosen.push_back(item->title); });
    menu.setMenu(menuOf(exampleItems()));
  }

  void open() {
    menu.popup({100, 100});
    settle();
  }

  QAction* action(int index) const { return menu.actions().at(index); }
  QMenu* submenu(int index) const { return action(index)->menu(); }

  static void press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(&widget, &down);
    settle();
  }

  void click(QAction* target) {
    const QPointF place = menu.actionGeometry(target).center();
    for (const auto type :
         {QEvent::MouseMove, QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, place, menu.mapToGlobal(place), Qt::LeftButton,
                        type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                        Qt::NoModifier);
      QCoreApplication::sendEvent(&menu, &event);
    }
    settle();
  }

  PopupMenu menu;
  std::vector<std::string> chosen;
};
