#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "scanner/vorda_process.h"
#include "ui/menu_arrangement.h"
#include "ui/row_order.h"

/// Finds the processes that will have a row, before it is known what cards hold for them. Keeps its
/// buffers.
class ShownPids {
 public:
  /// Pids, ascending, valid until the next call; `more` are added. Of a folded family: every member
  /// in `processes`. `unlistedMembers`: MenuContent's.
  std::span<const std::int32_t> of(const std::vector<VordaProcess>& processes,
                                   const std::vector<VordaProcess>& unlistedMembers,
                                   const MenuArrangement& arrangement,
                                   std::span<const std::int32_t> more);

 private:
  ProcessList inOrder_;
  std::vector<std::int32_t> pids_;
};
