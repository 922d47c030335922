#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "frontends/appkit/menu_target.h"
#include "ui/menu.h"

/// Replaces the menu's items by these. Items with an action send it to the target; an item that is
/// about a process has the process's start identity as its tag.
void fillMenu(NSMenu* menu, const std::vector<MenuItem>& items, VordaMenuTarget* target);
