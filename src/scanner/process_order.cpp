#include "scanner/process_order.h"

#include <algorithm>

namespace ProcessScanner {
namespace {

/// Training comes first: this is not the order in which the roles are declared.
int rank(LabRole role) {
  switch (role) {
    case LabRole::training:
      return 0;
    case LabRole::inference:
      return 1;
    case LabRole::agent:
      return 2;
    case LabRole::none:
      break;
  }
  return 3;
}

}  // namespace

void sortByRoleAndMemory(std::vector<VordaProcess>& processes) {
  std::ranges::stable_sort(processes, [](const auto& a, const auto& b) {
    if (a.labRole != b.labRole) return rank(a.labRole) < rank(b.labRole);
    return a.memMB > b.memMB;
  });
}

}  // namespace ProcessScanner
