#pragma once

#include <vector>

#include "ui/settings_line.h"

/// What the Settings window says. It has nothing to set: the program keeps no settings.
namespace SettingsView {

/// From top to bottom.
std::vector<Line> lines();

}  // namespace SettingsView
