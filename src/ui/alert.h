#pragma once

#include <string>
#include <vector>

/// A modal question or message. Plain text throughout.
struct Alert {
  enum class Style { informational, warning };
  enum class Icon { standard, badge };
  static constexpr double kBadgeSide = 48;  ///< in points

  std::string messageText;
  std::string informativeText;
  Style style = Style::informational;
  Icon icon = Icon::standard;
  /// In order; the first is the default. Empty: one button that dismisses the alert. One
  /// called "Cancel" is what Escape means.
  std::vector<std::string> buttons;
  /// Whether the program comes to the front for it, where a program can be behind others.
  bool activatesProgram = true;

  bool operator==(const Alert&) const = default;
};

/// What FrontEnd::runModal answers for the first button; the next ones follow by one each.
inline constexpr int kAlertFirstButtonReturn = 1000;

/// The answer of an alert that was closed without a button.
inline constexpr int kAlertDismissed = 0;
