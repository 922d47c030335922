#include <string>

#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "ui/family_rows.h"
#include "ui/memory_lines.h"
#include "ui/menu_builders.h"
#include "ui/menu_construction.h"
#include "ui/name_limits.h"
#include "ui/process_color.h"
#include "ui/row_glyphs.h"

namespace MenuConstruction {
namespace {

using MenuBuilders::named;

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
  return std::string(RowGlyphs::kSeparator) + "GPU " +
         MemoryFormat::compact(process.gpuMemory->memMB);
}

MenuItem processRow(const VordaProcess& process, const Words& words) {
  return named(process.labRole == LabRole::none ? "" : RowGlyphs::kWorkload,
               NameLimits::cut(words.name, NameLimits::kProcessName),
               RowGlyphs::kSeparator + MemoryFormat::compact(process.memMB) +
                   (process.isProtected ? RowGlyphs::kProtected : "") + gpuEnding(process) +
                   mappedEnding(process));
}

void addToolTip(MenuItem& row, const VordaProcess& process, const Words& words,
                const FamilyEntries* family) {
  std::string& lines = row.toolTip;
  lines = words.name + "\n" + MemoryFormat::detail(process.memMB) + " · " + words.product +
          " · pid " + std::to_string(process.pid) + "\nOwner: " + words.owner +
          (process.isProtected ? " (protected)" : "");
  row.ownerEnd = lines.size();
  lines += "\nColor matches the pressure strip above.";
  for (const std::string& line : gpuLines(process)) lines += "\n" + line;
  for (const std::string& line : explainedMappedLines(process)) lines += "\n" + line;
  if (const std::string line = leftBehindLine(process); !line.empty()) lines += "\n" + line;
  if (family != nullptr) lines += "\n" + family->toolTip;
}

}  // namespace

std::string processTitle(const VordaProcess& process) {
  return processRow(process, Words(process)).title;
}

MenuItem processItem(const VordaProcess& process, const std::vector<std::string>& asked,
                     const FamilyEntries* family) {
  const Words words(process);
  MenuItem item = processRow(process, words);
  addToolTip(item, process, words, family);
  item.dot = ProcessColor::color(process);
  item.process = ProcessReference{process.pid, process.identity};
  item.isLeftBehind = !leftBehindLine(process).empty();
  item.isOfFamily = family != nullptr;
  item.submenu = processSubmenu(process, asked, family);
  for (MenuItem& entry : item.submenu) entry.process = item.process;
  return item;
}

}  // namespace MenuConstruction
