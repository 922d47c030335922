#pragma once

#include <string>
#include <utility>

#include "ui/menu.h"

/// The three kinds of plain item that the menu is made of.
namespace MenuBuilders {

/// A grey line that only tells something.
inline MenuItem label(std::string title) {
  return {.title = std::move(title), .enabled = false};
}

/// An item that does something when it is chosen.
inline MenuItem command(std::string title, Action action, RepresentedObject object = {}) {
  return {.title = std::move(title), .action = action, .representedObject = std::move(object)};
}

/// What keeps two sections apart.
inline MenuItem separator() {
  return {.kind = MenuItem::Kind::separator};
}

}  // namespace MenuBuilders
