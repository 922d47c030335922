#pragma once

#include <string>

/// How the Settings window is laid out, as values; app/settings_view.h says what stands in it.
namespace SettingsView {

inline constexpr const char* kTitle = "Vorda Settings";  ///< of the window

/// The window's size, and the room around its lines, in points.
///@{
inline constexpr int kWidth = 400;
inline constexpr int kHeight = 260;
inline constexpr int kPadding = 24;
///@}

/// The kinds of font: `body` is the usual one; the others go from the largest to the smallest.
enum class Font { body, title2Bold, caption, caption2 };
/// How strongly a line stands out.
enum class Foreground { primary, secondary, tertiary };

/// One line of text.
struct Line {
  std::string text;                             ///< what it says
  Font font = Font::body;                       ///< how large
  Foreground foreground = Foreground::primary;  ///< how strong
  int topPadding = 0;                           ///< in points, besides the usual spacing

  bool operator==(const Line&) const = default;
};

}  // namespace SettingsView
