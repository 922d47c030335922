#pragma once

#include <vector>

#include "ui/menu_construction.h"
#include "ui/row_order.h"

namespace MenuConstruction {

/// Adds the lines below the strip: the machine's memory, the cards', the largest processes, and how
/// many train and serve. `bySize`: all processes, the largest first; `training` and `servers`:
/// those of these roles.
void addSummary(std::vector<MenuItem>& items, const MenuContent& content, const ProcessList& bySize,
                const ProcessList& training, const ProcessList& servers);

}  // namespace MenuConstruction
