#include "ui/memory_lines.h"

#include <cstddef>

#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "ui/menu_limits.h"
#include "ui/name_limits.h"
#include "ui/row_glyphs.h"

std::vector<std::string> gpuLines(const VordaProcess& process) {
  constexpr std::size_t kMost = MenuLimits::kMaxGpuShares;
  std::vector<std::string> lines;
  if (!process.gpuMemory) return lines;
  const auto& shares = process.gpuMemory->shares;
  const std::string what = "GPU memory: ";
  for (const GpuMemory::Share& share : shares) {
    if (shares.size() > kMost && lines.size() == kMost - 1) {
      double rest = 0;
      for (std::size_t i = lines.size(); i < shares.size(); ++i) rest += shares[i].memMB;
      lines.push_back(what + MemoryFormat::detail(rest) + " on " +
                      std::to_string(shares.size() - lines.size()) + " other cards");
      break;
    }
    lines.push_back(what + MemoryFormat::detail(share.memMB) +
                    (share.card.empty() ? "" : " on " + text::displayName(share.card)));
  }
  return lines;
}

std::vector<std::string> mappedLines(const VordaProcess& process) {
  std::vector<std::string> lines;
  if (!process.mapped) return lines;
  if (process.mapped->mappedMB > 0)
    lines.push_back("Mapped: " + MemoryFormat::inSentence(process.mapped->mappedMB));
  if (process.mapped->sharedMB > 0)
    lines.push_back("Shared: " + MemoryFormat::inSentence(process.mapped->sharedMB));
  return lines;
}

std::vector<std::string> explainedMappedLines(const VordaProcess& process) {
  std::vector<std::string> lines = mappedLines(process);
  for (std::string& line : lines) line += ", not counted above: others may use the same";
  return lines;
}

std::vector<std::string> mappedFileLines(const VordaProcess& process) {
  std::vector<std::string> lines;
  if (!process.mapped) return lines;
  for (const MappedMemory::File& file : process.mapped->files) {
    lines.push_back("  " + NameLimits::cut(text::displayName(file.name), NameLimits::kFileName) +
                    RowGlyphs::kSeparator + MemoryFormat::inSentence(file.memMB));
  }
  return lines;
}

std::string mappedEnding(const VordaProcess& process) {
  if (process.labRole == LabRole::none || !process.mapped) return {};
  if (process.mapped->modelMB < 1) return {};
  return std::string(RowGlyphs::kSeparator) + "+" +
         MemoryFormat::inSentence(process.mapped->modelMB) + " mapped";
}
