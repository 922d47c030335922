#include "platform/linux/system_monitor.h"

#include <algorithm>

#include "text/split.h"

namespace platform {
namespace {

using Names = std::vector<std::string>;

bool holds(const Names& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

bool holdsAny(const Names& names, const Names& wanted) {
  return std::ranges::any_of(wanted, [&names](const auto& name) { return holds(names, name); });
}

bool isSystemMonitor(const DesktopEntry& entry) {
  return holds(entry.categories, "System") && holds(entry.categories, "Monitor");
}

bool isShownOn(const Names& desktops, const DesktopEntry& entry) {
  if (!entry.isListed || holdsAny(entry.notShowIn, desktops)) return false;
  return entry.onlyShowIn.empty() || holdsAny(entry.onlyShowIn, desktops);
}

bool belongsTo(const Names& desktops, const DesktopEntry& entry) {
  return holdsAny(entry.onlyShowIn, desktops) || holdsAny(entry.categories, desktops);
}

}  // namespace

std::vector<std::string> desktopNames(std::string_view value) {
  const auto names = text::partsOf(value, ':');
  return {names.begin(), names.end()};
}

std::vector<InstalledApplication> systemMonitors(
    const std::vector<InstalledApplication>& applications, const Names& desktops) {
  std::vector<InstalledApplication> monitors;
  for (const auto& application : applications) {
    if (isSystemMonitor(application.entry) && isShownOn(desktops, application.entry)) {
      monitors.push_back(application);
    }
  }
  std::stable_partition(monitors.begin(), monitors.end(), [&desktops](const auto& monitor) {
    return belongsTo(desktops, monitor.entry);
  });
  return monitors;
}

}  // namespace platform
