#pragma once

#include <string>
#include <vector>

/// What the Settings window says. It has nothing to set: the program keeps no settings.
namespace SettingsView {

inline constexpr int kWidth = 400;  // points, as are the other figures here
inline constexpr int kHeight = 260;
inline constexpr int kPadding = 24;

enum class Font { body, title2Bold, caption, caption2 };
enum class Foreground { primary, secondary, tertiary };

struct Line {
  std::string text;
  Font font = Font::body;
  Foreground foreground = Foreground::primary;
  int topPadding = 0;

  bool operator==(const Line&) const = default;
};

/// From top to bottom.
std::vector<Line> lines();

}  // namespace SettingsView
