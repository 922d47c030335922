#include "ui/gpu_lines.h"

#include <cstddef>

#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "ui/menu_limits.h"

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
