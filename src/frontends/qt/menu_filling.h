#pragma once

#include <QMenu>
#include <functional>
#include <memory>
#include <vector>

#include "ui/menu.h"

/// Makes `menu` show `items` with their submenus, as ItemActions, which keep `items` alive. An
/// item that means the same as one that is already shown takes over that one's action, so that the
/// selection and an open submenu stay. A visible menu stays open. `onNewSubmenu` is called for
/// each new submenu.
void fillMenu(QMenu& menu, const std::shared_ptr<const std::vector<MenuItem>>& items,
              const std::function<void(QMenu&)>& onNewSubmenu);
