#pragma once

/// How the user asks programs to look.
struct Appearance {
  enum class Colors { noPreference, dark, light };

  Colors colors = Colors::noPreference;
  bool highContrast = false;

  bool operator==(const Appearance&) const = default;
};
