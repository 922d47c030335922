#include "ui/process_lists.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace ProcessLists {

ProcessList all(const std::vector<VordaProcess>& sample) {
  ProcessList list;
  list.reserve(sample.size());
  for (const VordaProcess& process : sample) list.push_back(&process);
  return list;
}

ProcessList byMemory(const std::vector<VordaProcess>& sample) {
  ProcessList list = all(sample);
  std::ranges::stable_sort(list, std::ranges::greater(), &VordaProcess::memMB);
  return list;
}

ProcessList ofRole(const ProcessList& list, LabRole role) {
  ProcessList chosen;
  std::ranges::copy_if(list, std::back_inserter(chosen),
                       [role](const auto* process) { return process->labRole == role; });
  return chosen;
}

ProcessList first(const ProcessList& list, std::size_t limit) {
  const auto count = static_cast<std::ptrdiff_t>(std::min(list.size(), limit));
  return {list.begin(), list.begin() + count};
}

double totalMB(const ProcessList& list) {
  double sum = 0;
  for (const VordaProcess* process : list) sum += process->memMB;
  return sum;
}

}  // namespace ProcessLists
