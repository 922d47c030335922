#pragma once

#include "ui/canvas.h"

/// The dot that ties a process's row to its bar in the strip: an oval in a square picture.
namespace Dot {

inline constexpr double kSide = 12;            ///< of the picture, in points
inline constexpr Rectangle kOval{2, 2, 8, 8};  ///< within the picture

}  // namespace Dot
