#include "ui/row_order.h"

#include <algorithm>
#include <functional>

#include "text/ascii.h"

ProcessList listOf(const std::vector<VordaProcess>& sample) {
  ProcessList list;
  list.reserve(sample.size());
  for (const VordaProcess& process : sample) list.push_back(&process);
  return list;
}

ProcessList largestOf(const std::vector<VordaProcess>& sample, std::size_t most) {
  ProcessList list = listOf(sample);
  std::ranges::stable_sort(list, std::ranges::greater(), &VordaProcess::memMB);
  list.resize(std::min(list.size(), most));
  return list;
}

bool comesBefore(const VordaProcess& a, const VordaProcess& b, SortBy sortBy) {
  const auto onGpus = [](const VordaProcess& process) {
    return process.gpuMemory ? process.gpuMemory->memMB : 0;
  };
  switch (sortBy) {
    case SortBy::gpu:
      return onGpus(a) > onGpus(b);
    case SortBy::name:
      return std::ranges::lexicographical_compare(a.displayName, b.displayName, {},
                                                  text::asciiLower, text::asciiLower);
    case SortBy::start:
      return a.startTime > b.startTime;
    case SortBy::memory:
      break;
  }
  return false;
}

SortBy sortAfter(SortBy sortBy, bool hasGpus) {
  switch (sortBy) {
    case SortBy::memory:
      return hasGpus ? SortBy::gpu : SortBy::name;
    case SortBy::gpu:
      return SortBy::name;
    case SortBy::name:
      return SortBy::start;
    case SortBy::start:
      break;
  }
  return SortBy::memory;
}
