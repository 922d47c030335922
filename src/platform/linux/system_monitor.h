#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/installed_applications.h"

namespace platform {

/// The names in a value of XDG_CURRENT_DESKTOP ("ubuntu:GNOME").
std::vector<std::string> desktopNames(std::string_view value);

/// The system monitors among `applications`, in the order in which to try them: listed on this
/// desktop, with both System and Monitor among their categories; those that name the desktop
/// itself (as the only one to be shown on, or as a category) before the others.
std::vector<InstalledApplication> systemMonitors(
    const std::vector<InstalledApplication>& applications,
    const std::vector<std::string>& desktops);

}  // namespace platform
