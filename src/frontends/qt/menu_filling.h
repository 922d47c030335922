#pragma once

#include <QMenu>
#include <functional>
#include <memory>
#include <vector>

#include "ui/menu.h"

/// Makes `menu` show `items`, submenus and all, as ItemActions, each of which shares their life.
/// An item that means the same as one that is shown already takes its place, so that the user's
/// choice and an open submenu stay. A visible menu stays open. `onNewSubmenu` is told of each
/// submenu made.
void fillMenu(QMenu& menu, const std::shared_ptr<const std::vector<MenuItem>>& items,
              const std::function<void(QMenu&)>& onNewSubmenu);
