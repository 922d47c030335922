#include <string>

#include "platform/words.h"
#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "text/unicode.h"
#include "ui/menu_builders.h"
#include "ui/menu_construction.h"
#include "ui/process_color.h"
#include "ui/row_parts.h"

namespace MenuConstruction {
namespace {

using MenuBuilders::command;
using MenuBuilders::label;
using MenuBuilders::separator;

std::string processTitle(const VordaProcess& process) {
  return (process.labRole == LabRole::none ? "" : "★ ") +
         text::shortened(process.displayName, 42, 41) + RowParts::kSeparator +
         MemoryFormat::compact(process.memMB) + (process.isProtected ? " 🔒" : "");
}

// The lines are ours, so the words of others between them must not bring their own.
std::string processToolTip(const VordaProcess& process) {
  return text::displayLine(process.displayName) + "\n" + MemoryFormat::detail(process.memMB) +
         " · " + process.product + " · pid " + std::to_string(process.pid) +
         "\nOwner: " + text::displayLine(process.ownerName) +
         (process.isProtected ? " (protected)" : "") + "\nColor matches the pressure strip above.";
}

/// Most programs take those that they started with them.
std::string belowText(std::size_t processes) {
  return std::to_string(processes) +
         (processes == 1 ? " other process runs below it" : " other processes run below it");
}

bool isDocker(const VordaProcess& process) {
  return process.product == "Docker" ||
         text::lowered(process.displayName).find("docker") != std::string::npos;
}

std::vector<MenuItem> processSubmenu(const VordaProcess& process) {
  std::vector<MenuItem> items;
  items.push_back(
      label(MemoryFormat::detail(process.memMB) + " · pid " + std::to_string(process.pid)));
  items.push_back(label(process.product + (process.isProtected ? " · " + process.ownerName : "")));
  items.push_back(separator());
  if (process.isProtected) {
    items.push_back(label("Protected (" + process.ownerName + ") — cannot quit from Vorda"));
    if (isDocker(process)) {
      items.push_back(command(
          "Quit Docker Desktop from the " + std::string(platform::words().statusArea) + " whale",
          Action::openDockerHelp));
    }
  } else {
    if (process.processesBelow > 0) items.push_back(label(belowText(process.processesBelow)));
    items.push_back(command("Quit", Action::quitProcess, process.pid));
    items.push_back(command("Force Quit (" + MemoryFormat::compact(process.memMB) + ")",
                            Action::forceProcess, process));
  }
  items.push_back(command("Full details…", Action::showDetails, process));
  for (const std::string& label : process.matchedAgents) {
    items.push_back(command("Unload " + label, Action::unloadByLabel, label));
  }
  return items;
}

}  // namespace

MenuItem processItem(const VordaProcess& process) {
  MenuItem item{.title = processTitle(process),
                .toolTip = processToolTip(process),
                .dot = ProcessColor::color(process),
                .process = ProcessReference{process.pid, process.identity},
                .submenu = processSubmenu(process)};
  for (MenuItem& entry : item.submenu) entry.process = item.process;
  return item;
}

}  // namespace MenuConstruction
