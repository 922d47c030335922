#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "scanner/vorda_process.h"
#include "ui/menu_arrangement.h"
#include "ui/row_order.h"

/// Finds the processes that would have a row but for what graphics cards hold. Keeps its buffers.
class ShownPids {
 public:
  /// By pid, and until the next call; `more` are shown besides. Of a family that has one row, all
  /// that are in `processes`. `unlistedMembers`: MenuContent's.
  std::span<const std::int32_t> of(const std::vector<VordaProcess>& processes,
                                   const std::vector<VordaProcess>& unlistedMembers,
                                   const MenuArrangement& arrangement,
                                   std::span<const std::int32_t> more);

 private:
  ProcessList inOrder_;
  std::vector<std::int32_t> pids_;
};
