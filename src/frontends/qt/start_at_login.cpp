#include "frontends/qt/start_at_login.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::pair<std::string_view, std::string_view> kPlaces[] = {
    {"GNOME", "Tweaks, Startup Applications"},
    {"KDE", "System Settings, Autostart"},
    {"XFCE", "Session and Startup, Application Autostart"},
    {"MATE", "Control Center, Startup Applications"},
    {"X-Cinnamon", "System Settings, Startup Applications"},
    {"Budgie", "Budgie Desktop Settings, Autostart"},
    {"LXQt", "Session Settings, Autostart"},
};

}  // namespace

std::string startAtLoginHint(std::string_view desktops) {
  std::string_view place = "copy vorda.desktop to ~/.config/autostart";
  while (!desktops.empty()) {
    const std::string_view desktop = desktops.substr(0, desktops.find(':'));
    for (const auto& [name, where] : kPlaces) {
      if (desktop == name) return "To start it at login: " + std::string(where) + ".";
    }
    desktops.remove_prefix(std::min(desktop.size() + 1, desktops.size()));
  }
  return "To start it at login: " + std::string(place) + ".";
}
