#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "frontends/appkit/menu_target.h"
#include "ui/menu.h"

/// Puts these items, and nothing else, into the menu. Items with an action send it to the
/// target; those that speak of a process have its start identity as their tag.
void fillMenu(NSMenu* menu, const std::vector<MenuItem>& items, VordaMenuTarget* target);
