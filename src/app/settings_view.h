#pragma once

#include <vector>

#include "ui/settings_layout.h"

/// The contents of the Settings window. There is nothing to set in it: the program has no
/// settings.
namespace SettingsView {

/// From top to bottom.
std::vector<Line> lines();

}  // namespace SettingsView
