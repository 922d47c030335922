#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "ui/menu.h"

/// Makes the plain items of the menu, and knows the glyphs in its rows. A row is a name, a figure
/// and a state, in this order.
namespace MenuBuilders {

/// Separates the parts of a row.
inline constexpr const char* kSeparator = "  ·  ";
inline constexpr const char* kWorkload = "★ ";   ///< before the name of an AI workload
inline constexpr const char* kProtected = " 🔒";  ///< behind the figure of somebody else's process
inline constexpr const char* kKeptAlive = " ↺";  ///< behind the state of a launch agent

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
