#include <string>
#include <utility>

#include "platform/words.h"
#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "text/unicode.h"
#include "ui/family_items.h"
#include "ui/gpu_lines.h"
#include "ui/mapped_lines.h"
#include "ui/menu_builders.h"
#include "ui/menu_construction.h"
#include "ui/menu_limits.h"
#include "ui/process_color.h"

namespace MenuConstruction {
namespace {

using MenuBuilders::command;
using MenuBuilders::label;
using MenuBuilders::named;
using MenuBuilders::separator;

/// The texts of a process that others chose, made safe to show.
struct Words {
  explicit Words(const VordaProcess& process)
      : name(text::displayName(process.displayName)),
        product(text::displayName(process.product)),
        owner(text::displayName(process.ownerName)) {}

  std::string name;
  std::string product;
  std::string owner;
};

std::string gpuEnding(const VordaProcess& process) {
  if (!process.gpuMemory) return {};
  return std::string(MenuBuilders::kSeparator) + "GPU " +
         MemoryFormat::compact(process.gpuMemory->memMB);
}

MenuItem processRow(const VordaProcess& process, const Words& words) {
  return named(process.labRole == LabRole::none ? "" : MenuBuilders::kWorkload,
               MenuLimits::cut(words.name, MenuLimits::kProcessName),
               MenuBuilders::kSeparator + MemoryFormat::compact(process.memMB) +
                   (process.isProtected ? MenuBuilders::kProtected : "") + gpuEnding(process) +
                   mappedEnding(process));
}

std::string processToolTip(const VordaProcess& process, const Words& words) {
  std::string lines = words.name + "\n" + MemoryFormat::detail(process.memMB) + " · " +
                      words.product + " · pid " + std::to_string(process.pid) +
                      "\nOwner: " + words.owner + (process.isProtected ? " (protected)" : "") +
                      "\nColor matches the pressure strip above.";
  for (const std::string& line : gpuLines(process)) lines += "\n" + line;
  return lines;
}

/// The processes below, which mostly end together with this one.
std::string belowText(std::size_t processes) {
  return std::to_string(processes) +
         (processes == 1 ? " other process runs below it" : " other processes run below it");
}

bool isMlxServer(const VordaProcess& process) {
  return process.labRole == LabRole::inference && process.product == "MLX";
}

bool isDocker(const VordaProcess& process) {
  return process.product == "Docker" ||
         text::lowered(process.displayName).find("docker") != std::string::npos;
}

std::vector<MenuItem> processSubmenu(const VordaProcess& process, const Words& words,
                                     const std::vector<std::string>& asked) {
  const SharedRecord<VordaProcess> record(process);
  std::vector<MenuItem> items;
  items.push_back(
      label(MemoryFormat::detail(process.memMB) + " · pid " + std::to_string(process.pid)));
  items.push_back(label(words.product + (process.isProtected ? " · " + words.owner : "")));
  for (std::string& line : gpuLines(process)) items.push_back(label(std::move(line)));
  items.push_back(separator());
  if (process.isProtected) {
    items.push_back(label("Protected (" + words.owner + ") — cannot quit from Vorda"));
    if (isDocker(process)) {
      items.push_back(command(
          "Quit Docker Desktop from the " + std::string(platform::words().statusArea) + " whale",
          Action::openDockerHelp));
    }
  } else {
    if (process.processesBelow > 0) items.push_back(label(belowText(process.processesBelow)));
    for (const std::string& line : asked) items.push_back(label(line));
    items.push_back(command("Quit", Action::quitProcess, process.pid));
    if (isMlxServer(process) && !platform::words().mlxQuitFirst.empty()) {
      items.push_back(label(std::string(platform::words().mlxQuitFirst)));
    }
    items.push_back(command("Force Quit (" + MemoryFormat::compact(process.memMB) + ")",
                            Action::forceProcess, record));
  }
  items.push_back(command("Full details…", Action::showDetails, record));
  for (const std::string& label : process.matchedAgents) {
    items.push_back(command("Unload " + text::displayName(label), Action::unloadByLabel, label));
  }
  return items;
}

constexpr std::ptrdiff_t kBelowOwner = 2;  // in the submenu

void addMapped(MenuItem& item, const VordaProcess& process) {
  for (const std::string& line : explainedMappedLines(process)) item.toolTip += "\n" + line;
  std::vector<MenuItem> labels;
  for (std::string& line : mappedLines(process)) labels.push_back(label(std::move(line)));
  item.submenu.insert(item.submenu.begin() + kBelowOwner, labels.begin(), labels.end());
}

/// What is said of the processes that it belongs to.
void addFamily(MenuItem& item, const VordaProcess& process, const FamilyEntries* family) {
  if (const std::string line = leftBehindLine(process); !line.empty()) {
    item.isLeftBehind = true;
    item.toolTip += "\n" + line;
    item.submenu.insert(item.submenu.begin() + kBelowOwner, label(line));
  }
  if (family == nullptr) return;
  item.toolTip += "\n" + family->toolTip;
  item.submenu.insert(item.submenu.end(), family->items.begin(), family->items.end());
  item.folded = family->folded;
}

}  // namespace

MenuItem processItem(const VordaProcess& process, const std::vector<std::string>& asked,
                     const FamilyEntries* family) {
  const Words words(process);
  MenuItem item = processRow(process, words);
  item.toolTip = processToolTip(process, words);
  item.dot = ProcessColor::color(process);
  item.process = ProcessReference{process.pid, process.identity};
  item.submenu = processSubmenu(process, words, asked);
  addMapped(item, process);
  addFamily(item, process, family);
  for (MenuItem& entry : item.submenu) entry.process = item.process;
  return item;
}

}  // namespace MenuConstruction
