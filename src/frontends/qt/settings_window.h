#pragma once

#include <QWidget>
#include <string>
#include <vector>

/// One line of the Settings window.
struct SettingsLine {
  enum class Font { body, title2Bold, caption, caption2 };
  enum class Foreground { primary, secondary, tertiary };

  std::string text;
  Font font = Font::body;
  Foreground foreground = Foreground::primary;
  int topPadding = 0;  ///< in points, besides the spacing between lines
};

/// The Settings window: it says what the program is and where to find it. There is nothing
/// to set. Closing it deletes it and leaves the program running.
class SettingsWindow : public QWidget {
 public:
  static constexpr int kWidth = 400;
  static constexpr int kHeight = 260;
  static constexpr int kPadding = 24;

  explicit SettingsWindow(const std::vector<SettingsLine>& lines);
};
