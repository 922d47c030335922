#include "scanner/scan_order.h"

#include <algorithm>
#include <numeric>
#include <utility>

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
  std::vector<std::size_t> order;
  sortByRoleAndMemory(processes, order);
}

// std::stable_sort would take memory for as many processes once more.
void sortByRoleAndMemory(std::vector<VordaProcess>& processes, std::vector<std::size_t>& order) {
  order.resize(processes.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::sort(order, [&processes](std::size_t first, std::size_t second) {
    const VordaProcess& a = processes[first];
    const VordaProcess& b = processes[second];
    if (a.labRole != b.labRole) return rank(a.labRole) < rank(b.labRole);
    if (a.memMB != b.memMB) return a.memMB > b.memMB;
    return first < second;
  });
  // order[place] is the index of the process that belongs at `place`; the swaps follow each cycle
  // of the permutation once.
  for (std::size_t start = 0; start < order.size(); ++start) {
    std::size_t place = start;
    while (order[place] != start) {
      const std::size_t from = std::exchange(order[place], place);
      std::swap(processes[place], processes[from]);
      place = from;
    }
    order[place] = place;
  }
}

}  // namespace ProcessScanner
