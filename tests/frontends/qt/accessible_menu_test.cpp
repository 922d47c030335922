// What a screen reader finds: the tree of what is on the screen, dumped line by line.
#include "frontends/qt/accessible_menu.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMetaEnum>

#include "frontends/qt/event_loop.h"
#include "frontends/qt/menu_examples.h"
#include "frontends/qt/menu_window.h"
#include "frontends/qt/popup_menu.h"

namespace {

std::string nameOf(QAccessible::Role role) {
  switch (role) {
    case QAccessible::PopupMenu:
      return "menu";
    case QAccessible::MenuItem:
      return "item";
    case QAccessible::StaticText:
      return "text";
    case QAccessible::Client:
      return "widget";
    case QAccessible::Separator:
      return "separator";
    case QAccessible::PushButton:
      return "button";
    case QAccessible::Application:
      return "application";
    default:
      return "other";
  }
}

/// Each line a role, a name and a description, further to the right than its parent's. Fails where
/// a child does not find its parent or place.
void dump(QAccessibleInterface* node, int depth, std::vector<std::string>& lines) {
  std::string line = std::string(2 * static_cast<std::size_t>(depth), ' ') + nameOf(node->role());
  const QString name = node->text(QAccessible::Name);
  const QString description = node->text(QAccessible::Description);
  if (!name.isEmpty()) line += " \"" + name.toStdString() + "\"";
  if (!description.isEmpty()) {
    line += " (" + QString(description).replace('\n', " | ").toStdString() + ")";
  }
  lines.push_back(line);
  for (int i = 0; i < node->childCount(); ++i) {
    QAccessibleInterface* child = node->child(i);
    ASSERT_NE(child, nullptr) << line << " " << i;
    EXPECT_EQ(node->indexOfChild(child), i) << line;
    EXPECT_EQ(child->parent(), node) << line << " " << i;
    dump(child, depth + 1, lines);
  }
}

std::vector<std::string> tree(QObject* root) {
  std::vector<std::string> lines;
  dump(QAccessible::queryAccessibleInterface(root), 0, lines);
  return lines;
}

class AccessibleMenu : public testing::Test {
 protected:
  AccessibleMenu() {
    makeMenusAccessible();
    QApplication::setApplicationName("Vorda");
  }
  static std::vector<MenuItem> items() {
    std::vector<MenuItem> items = exampleItems();
    items.resize(4);
    items[3].name = {0, 6};
    RepresentedObject& object = items[3].submenu.back().representedObject;
    VordaProcess process = *recordIn<VordaProcess>(object);
    process.memMB = 312;
    process.labRole = LabRole::inference;
    process.isProtected = true;
    object = process;
    return items;
  }
  static std::vector<std::string> expectedMenu(const std::string& indent) {
    std::vector<std::string> lines{
        "menu \"Vorda menu\"",
        "  item \"Memory 62 percent used\"",
        "  item \"System 10.0 / 16 GB used\"",
        "  separator",
        "  item \"ollama, 312 MB, model server, protected\" (ollama | Owner: ada)",
        "    menu",
        "      item \"312 MB\"",
        "      separator",
        "      item \"Quit\"",
        "      item \"Full details…\"",
    };
    for (std::string& line : lines) line.insert(0, indent);
    return lines;
  }
};

TEST_F(AccessibleMenu, IsInTheTreeWhileItIsOpen) {
  PopupMenu menu;
  menu.setMenu(menuOf(items()));
  EXPECT_EQ(tree(qApp).size(), 1U);
  menu.popup({100, 100});
  settle();
  std::vector<std::string> expected = expectedMenu("  ");
  expected.insert(expected.begin(), "application \"Vorda\"");
  EXPECT_EQ(tree(qApp), expected);
  menu.close();
  EXPECT_EQ(tree(qApp).size(), 1U);
}

TEST_F(AccessibleMenu, StandsBesideItsWindow) {
  MenuWindow window;
  window.setTitle("Vorda²");
  window.setToolTipText("Vorda\n<b>firefox</b> 312 MB");
  window.setStrip(std::make_shared<MemoryPressureView>());
  window.show();
  PopupMenu menu(&window);
  menu.setMenu(menuOf(items()));
  menu.popup({100, 100});
  settle();
  std::vector<std::string> expected = expectedMenu("  ");
  expected.insert(
      expected.begin(),
      {"application \"Vorda\"", "  widget \"Vorda²\"", "    widget \"Memory 0 percent used\"",
       "    button \"Vorda²\" (Vorda | <b>firefox</b> 312 MB)",
       "    text \"Closing this window puts it away. To get it back, start Vorda again.\""});
  EXPECT_EQ(tree(qApp), expected);
}

TEST_F(AccessibleMenu, EverythingButSeparatorsIsReachedByKeys) {
  PopupMenu menu(nullptr, true);
  menu.setMenu(menuOf(items()));
  menu.popup({100, 100});
  settle();
  for (const int item : {0, 1, 3}) {
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QCoreApplication::sendEvent(&menu, &down);
    EXPECT_EQ(menu.activeAction(), menu.actions().at(item));
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(menu.actions().at(item))->state().focused);
  }
  // Without a screen reader keys go where something can be chosen.
  PopupMenu other(nullptr, false);
  other.setMenu(menuOf(items()));
  other.popup({100, 100});
  settle();
  QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
  QCoreApplication::sendEvent(&other, &down);
  EXPECT_EQ(other.activeAction(), other.actions().at(3));
}

TEST_F(AccessibleMenu, ItemsAreChosenByScreenReaders) {
  PopupMenu menu;
  menu.setMenu(menuOf(exampleItems()));
  std::vector<std::string> chosen;
  QObject::connect(&menu, &PopupMenu::chosen, [&](const std::shared_ptr<const MenuItem>& item) {
    chosen.push_back(item->title);
  });
  menu.popup({100, 100});
  settle();
  const auto act = [&menu](int item, const QString& name) {
    QAccessible::queryAccessibleInterface(menu.actions().at(item))
        ->actionInterface()
        ->doAction(name);
  };
  act(1, QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(chosen.empty());
  act(3, QAccessibleActionInterface::showMenuAction());
  EXPECT_TRUE(eventually([&menu] { return menu.actions().at(3)->menu()->isVisible(); }));
  act(7, QAccessibleActionInterface::pressAction());
  EXPECT_EQ(chosen, std::vector<std::string>{"Quit Vorda"});
}

}  // namespace
