#pragma once

#include <chrono>
#include <vector>

#include "frontends/qt/bus/instance_name.h"
#include "ui/alerts.h"
#include "ui/settings_layout.h"

/// The program's texts about itself.
struct TrayTexts {
  Alert about;
  std::vector<SettingsView::Line> settings;
};

/// The program on a desktop: shows itself in the tray until the user quits it, and opens the
/// Settings window at once where asked to.
///
/// Returns the exit status: 0 after the user quit it, or when another instance runs already and
/// has shown itself; 1, after one line on standard error, when that one does not answer. Ends the
/// program with 1 when there is no display. Each question to the other instance waits for
/// `patience` at most.
[[nodiscard]] int runTray(const TrayTexts& texts, bool opensSettings,
                          std::chrono::milliseconds patience = InstanceName::kPatience);
