#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/unicode.h"

/// How much the menu shows: from what size on a process has a row, how many rows there are, and how
/// long the names in them are.
namespace MenuLimits {

/// Ordinary processes are listed from this on, in MiB.
inline constexpr double kMinMemMB = 50;

/// How many rows a section has at most, and the strip segments.
///@{
inline constexpr std::size_t kMaxTopRAM = 8;
inline constexpr std::size_t kMaxAI = 12;  ///< in each AI section
inline constexpr std::size_t kMaxLaunchAgents = 6;
inline constexpr std::size_t kMaxStripSegments = 6;
inline constexpr std::size_t kMaxGpuLines = 4;  ///< cards of which each has a line of its own
inline constexpr std::size_t kMaxMore = 30;     ///< in the submenu of what ends a cut section
///@}

/// How many lines a process's submenu has at most of each kind.
///@{
inline constexpr std::size_t kMaxFamilyMembers = 30;
inline constexpr std::size_t kMaxGpuShares = 8;  ///< of graphics cards' memory
///@}

/// The most rows of the short menu (ui/short_menu.h).
///@{
inline constexpr std::size_t kMaxShortLargest = 5;  ///< processes at the top
inline constexpr std::size_t kMaxShortRows = 8;     ///< of a section; the last one may say "More"
inline constexpr std::size_t kMaxShortRowsInLittleRoom = 5;
///@}

/// From how many characters on a name is cut, and to how many before the "…".
struct NameLimit {
  std::size_t longest;
  std::size_t kept;
};
inline constexpr NameLimit kProcessName{42, 41};  ///< of a row, an alert, the strip's description
inline constexpr NameLimit kLargestName{34, 32};  ///< in the summary's line about the largest
inline constexpr NameLimit kLaunchAgentName{40, 38};
inline constexpr NameLimit kFileName{60, 59};  ///< of a file that a process has mapped

/// The name as far as it is shown; it is safe to show already (text/display_line.h).
inline std::string cut(std::string_view name, NameLimit limit) {
  return text::shortened(name, limit.longest, limit.kept);
}

}  // namespace MenuLimits
