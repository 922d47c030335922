#pragma once

#include <QMenu>
#include <functional>
#include <vector>

#include "frontends/qt/menu_snapshot.h"

/// Makes `menu` show `items` of `snapshot`, submenus and all, as ItemActions. An item that
/// means the same as one that is shown already takes its place, so that the user's choice
/// and an open submenu stay. A visible menu stays open. `onNewSubmenu` is told of each
/// submenu made.
void fillMenu(QMenu& menu, const std::vector<MenuItem>& items, const MenuSnapshot& snapshot,
              const std::function<void(QMenu&)>& onNewSubmenu);
