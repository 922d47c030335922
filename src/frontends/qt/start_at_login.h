#pragma once

#include <string>
#include <string_view>

/// Where a user tells their desktop to start the program at login, in one line. `desktops` is the
/// value of XDG_CURRENT_DESKTOP: names joined by colons, the first known one counts.
std::string startAtLoginHint(std::string_view desktops);
