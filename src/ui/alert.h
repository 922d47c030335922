#pragma once

#include <string>
#include <vector>

/// A modal question or message. Plain text throughout.
struct Alert {
  /// How grave it is.
  enum class Style { informational, warning };
  /// The picture beside the text: the style's own, or the program's badge.
  enum class Icon { standard, badge };
  static constexpr double kBadgeSide = 48;  ///< in points

  std::string messageText;             ///< the question or message, in bold
  std::string informativeText;         ///< the explanation below it
  Style style = Style::informational;  ///< how grave it is
  Icon icon = Icon::standard;          ///< what stands beside the text
  /// In order; the first is the default. Empty: one button that dismisses the alert. Escape
  /// chooses the one called "Cancel".
  std::vector<std::string> buttons;
  /// Whether the program comes to the front for this alert, on systems where it can be behind
  /// others.
  bool activatesProgram = true;

  bool operator==(const Alert&) const = default;
};

/// What FrontEnd::runModal returns for the first button; one more for each button after it.
inline constexpr int kAlertFirstButtonReturn = 1000;

/// The answer of an alert that was closed without a button.
inline constexpr int kAlertDismissed = 0;
