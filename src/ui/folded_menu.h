#pragma once

#include "ui/menu.h"

/// The menu with families folded: in each section the row that stands for a family
/// (MenuItem::folded) takes the place of its first member; the other members' rows are left out.
Menu foldedMenu(const Menu& menu);
