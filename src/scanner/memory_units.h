#pragma once

// "MB" and "GB" are what they mean throughout the program: 2^20 and 2^30 bytes.

inline constexpr double kBytesPerMB = 1048576;
inline constexpr double kBytesPerGB = 1073741824;
inline constexpr double kMBPerGB = 1024;
