#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ui/menu.h"

/// Menus as the controller makes them, only smaller.

inline MenuItem textItem(std::string title) {
  return {.title = std::move(title), .enabled = false};
}

inline MenuItem separatorItem() {
  return {.kind = MenuItem::Kind::separator};
}

inline MenuItem actionItem(std::string title, Action action) {
  return {.title = std::move(title), .action = action};
}

inline MenuItem stripItem(double pressure, std::vector<Segment> segments = {}) {
  auto strip = std::make_shared<MemoryPressureView>();
  strip->pressure = pressure;
  strip->segments = std::move(segments);
  return {.kind = MenuItem::Kind::strip, .enabled = false, .strip = std::move(strip)};
}

/// A process's row: `identity` tells it from another process with the same pid.
inline MenuItem processRow(std::int32_t pid, const std::string& name, std::uint64_t identity = 1,
                           const std::string& size = "312 MB") {
  const ProcessReference reference{pid, identity};
  VordaProcess process;
  process.pid = pid;
  process.displayName = name;
  MenuItem quit = actionItem("Quit", Action::quitProcess);
  quit.representedObject = pid;
  quit.process = reference;
  MenuItem details = actionItem("Full details…", Action::showDetails);
  details.representedObject = process;
  details.process = reference;
  MenuItem row = {.title = name + "  ·  " + size};
  row.toolTip = name + "\nOwner: ada";
  row.dot = Color{1, 0, 0};
  row.process = reference;
  row.submenu = {textItem(size), separatorItem(), quit, details};
  return row;
}

/// The same with a line whose title may become another, the first of its submenu.
inline MenuItem rowWithLiveTitle(std::int32_t pid, const std::string& title) {
  MenuItem row = processRow(pid, "torchrun");
  row.submenu.front().live = std::make_shared<LiveTitle>(LiveTitle{.title = title});
  return row;
}

inline std::shared_ptr<const Menu> menuOf(std::vector<MenuItem> items) {
  return std::make_shared<const Menu>(Menu{std::move(items)});
}

/// A strip, a line, two processes and the commands.
inline std::vector<MenuItem> exampleItems() {
  return {stripItem(0.62),
          textItem("System  10.0 / 16 GB used"),
          separatorItem(),
          processRow(11, "ollama"),
          processRow(12, "train_lora.py"),
          separatorItem(),
          actionItem("Refresh now", Action::refreshNow),
          actionItem("Quit Vorda", Action::quitApp)};
}
