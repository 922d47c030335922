#pragma once

#include <QWidget>
#include <vector>

#include "ui/settings_layout.h"

/// The Settings window: it says what the program is and where to find it. There is nothing
/// to set. Closing it deletes it and leaves the program running.
class SettingsWindow : public QWidget {
 public:
  explicit SettingsWindow(const std::vector<SettingsView::Line>& lines);
};
