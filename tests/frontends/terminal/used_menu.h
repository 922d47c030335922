#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/menu_view.h"
#include "frontends/terminal/sample_menu.h"

inline terminal::Input pressed(terminal::Input::Kind kind) {
  return {.kind = kind};
}

inline terminal::Input typed(char32_t character) {
  return {.kind = terminal::Input::Kind::character, .character = character};
}

/// A menu on a screen of 80 x 24, used without a controller.
class UsedMenu {
 public:
  explicit UsedMenu(Menu menu) { rebuild(std::move(menu)); }

  terminal::MenuGeometry geometry() const {
    return terminal::menuGeometry({80, 24}, view, terminal::Look{});
  }
  terminal::MenuRequest press(const terminal::Input& input) {
    return view.handle(input, geometry());
  }
  terminal::MenuRequest clickOn(const std::string& title) {
    const terminal::Box list = geometry().list;
    for (std::size_t i = 0; i < view.rows().size(); ++i) {
      if (view.rows()[i].title != title) continue;
      const int y = list.y + static_cast<int>(i - view.cursor().top());
      return press({.kind = terminal::Input::Kind::click, .x = 4, .y = y});
    }
    ADD_FAILURE() << "no row " << title;
    return {};
  }
  void rebuild(Menu menu) {
    const int height = terminal::listHeight({80, 24}, view, terminal::Look{});
    view.rebuilt(std::make_shared<const Menu>(std::move(menu)), height);
  }
  std::string selected() const { return view.selectedRow() ? view.selectedRow()->title : ""; }
  std::string selectedInSubmenu() const {
    return view.submenuItems()[*view.submenuCursor().selected()].title;
  }

  terminal::MenuView view;
};

inline Menu threeProcesses() {
  return SampleMenu::menu({SampleMenu::topRAM({1, 2, 3})});
}
