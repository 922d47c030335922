#include <string>
#include <utility>

#include "platform/words.h"
#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "text/unicode.h"
#include "ui/family_rows.h"
#include "ui/memory_lines.h"
#include "ui/menu_builders.h"
#include "ui/menu_construction.h"

namespace MenuConstruction {
namespace {

using MenuBuilders::command;
using MenuBuilders::label;
using MenuBuilders::separator;

/// What is known of the process.
void addFacts(std::vector<MenuItem>& items, const VordaProcess& process, const std::string& owner) {
  items.push_back(
      label(MemoryFormat::detail(process.memMB) + " · pid " + std::to_string(process.pid)));
  items.push_back(
      label(text::displayName(process.product) + (process.isProtected ? " · " + owner : "")));
  if (std::string line = leftBehindLine(process); !line.empty()) items.push_back(label(line));
  for (std::string& line : mappedLines(process)) items.push_back(label(std::move(line)));
  for (std::string& line : gpuLines(process)) items.push_back(label(std::move(line)));
}

bool isDocker(const VordaProcess& process) {
  return process.product == "Docker" ||
         text::lowered(process.displayName).find("docker") != std::string::npos;
}

/// Why somebody else's process can't be quit, and how Docker's can.
void addProtection(std::vector<MenuItem>& items, const VordaProcess& process,
                   const std::string& owner) {
  items.push_back(label("Protected (" + owner + ") — cannot quit from Vorda"));
  if (!isDocker(process)) return;
  items.push_back(command(
      "Quit Docker Desktop from the " + std::string(platform::words().statusArea) + " whale",
      Action::openDockerHelp));
}

/// The processes below, which mostly end together with this one.
std::string belowText(std::size_t processes) {
  return std::to_string(processes) +
         (processes == 1 ? " other process runs below it" : " other processes run below it");
}

bool isMlxServer(const VordaProcess& process) {
  return process.labRole == LabRole::inference && process.product == "MLX";
}

void addQuits(std::vector<MenuItem>& items, const VordaProcess& process,
              const SharedRecord<VordaProcess>& record, const std::vector<std::string>& asked) {
  if (process.processesBelow > 0) items.push_back(label(belowText(process.processesBelow)));
  for (const std::string& line : asked) items.push_back(label(line));
  items.push_back(command("Quit", Action::quitProcess, process.pid));
  if (isMlxServer(process) && !platform::words().mlxQuitFirst.empty()) {
    items.push_back(label(std::string(platform::words().mlxQuitFirst)));
  }
  items.push_back(command("Force Quit (" + MemoryFormat::compact(process.memMB) + ")",
                          Action::forceProcess, record));
}

}  // namespace

std::vector<MenuItem> processSubmenu(const VordaProcess& process,
                                     const std::vector<std::string>& asked,
                                     const FamilyEntries* family) {
  const std::string owner = text::displayName(process.ownerName);
  const SharedRecord<VordaProcess> record(process);
  std::vector<MenuItem> items;
  addFacts(items, process, owner);
  items.push_back(separator());
  if (process.isProtected) {
    addProtection(items, process, owner);
  } else {
    addQuits(items, process, record, asked);
  }
  items.push_back(command("Full details…", Action::showDetails, record));
  for (const std::string& launchAgent : process.matchedAgents) {
    items.push_back(
        command("Unload " + text::displayName(launchAgent), Action::unloadByLabel, launchAgent));
  }
  if (family != nullptr) items.insert(items.end(), family->items.begin(), family->items.end());
  items.shrink_to_fit();  // hundreds of rows have one
  return items;
}

}  // namespace MenuConstruction
