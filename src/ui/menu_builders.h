#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "ui/menu.h"

/// Makes the plain items of the menu.
namespace MenuBuilders {

/// A grey line that can't be chosen.
inline MenuItem label(std::string title) {
  return {.title = std::move(title), .enabled = false};
}

/// An item that does something when it is chosen.
inline MenuItem command(std::string title, Action action, RepresentedObject object = {}) {
  return {.title = std::move(title), .action = action, .representedObject = std::move(object)};
}

/// An item whose title is a name that somebody else chose, between words of the program's own.
inline MenuItem named(std::string before, std::string_view name, std::string_view after) {
  MenuItem item{.title = std::move(before)};
  item.name.begin = item.title.size();
  item.title += name;
  item.name.end = item.title.size();
  item.title += after;
  return item;
}

inline MenuItem separator() {
  return {.kind = MenuItem::Kind::separator};
}

}  // namespace MenuBuilders
