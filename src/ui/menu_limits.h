#pragma once

#include <cstddef>

/// How much the menu shows: from what size on a process has a row, and how many rows there are. How
/// long the names in them are: name_limits.h.
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

}  // namespace MenuLimits
