#include "frontends/qt/start_at_login.h"

#include <utility>

#include "text/split.h"

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
  for (const std::string_view desktop : text::partsOf(desktops, ':')) {
    for (const auto& [name, where] : kPlaces) {
      if (desktop == name) return "To start it at login: " + std::string(where) + ".";
    }
  }
  return "To start it at login: " + std::string(place) + ".";
}
