#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ui/menu.h"

/// Menus made by hand, in the shape of the real one.
namespace SampleMenu {

MenuItem label(const std::string& title);
MenuItem separator();
MenuItem command(const std::string& title, Action action);
/// A row with the submenu of a process of one's own: two labels, a separator, "Quit", "Force
/// Quit" and "Full details…".
MenuItem process(std::int32_t pid, const std::string& title, std::uint64_t identity = 1);
MenuItem launchAgent(const std::string& name);

/// The strip, three summary lines and these sections, the commands, all with separators and
/// headings.
struct Section {
  std::string heading;
  std::vector<MenuItem> rows;
};
Menu menu(const std::vector<Section>& sections);

/// A section of processes with these pids, titled "P" and the pid.
Section topRAM(const std::vector<std::int32_t>& pids);

/// Segments for these processes, `fraction` of the memory each.
void setStrip(Menu& menu, const std::vector<std::int32_t>& pids, double fraction, double pressure);

}  // namespace SampleMenu
