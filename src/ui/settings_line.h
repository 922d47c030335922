#pragma once

#include <string>

/// What the Settings window is made of, as values; app/settings_view.h says what stands in it.
namespace SettingsView {

inline constexpr const char* kTitle = "Vorda Settings";
inline constexpr int kWidth = 400;  // points, as are the other figures here
inline constexpr int kHeight = 260;
inline constexpr int kPadding = 24;

enum class Font { body, title2Bold, caption, caption2 };
enum class Foreground { primary, secondary, tertiary };

/// One line of text.
struct Line {
  std::string text;
  Font font = Font::body;
  Foreground foreground = Foreground::primary;
  int topPadding = 0;  ///< besides the spacing between lines

  bool operator==(const Line&) const = default;
};

}  // namespace SettingsView
