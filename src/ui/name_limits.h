#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/unicode.h"

/// How long the names in rows, alerts and descriptions are.
namespace NameLimits {

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

}  // namespace NameLimits
