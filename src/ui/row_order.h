#pragma once

#include <cstddef>
#include <vector>

#include "scanner/vorda_process.h"

/// Some of a sample's processes, in an order of their own. Points into the sample.
using ProcessList = std::vector<const VordaProcess*>;

/// All of them, in the sample's order.
ProcessList listOf(const std::vector<VordaProcess>& sample);

/// The largest processes, at most `most` of them; equals in the sample's order.
ProcessList largestOf(const std::vector<VordaProcess>& sample, std::size_t most);

/// What the rows of a section are sorted by, before it is cut; equals by memory.
enum class SortBy {
  memory,  ///< the largest first
  gpu,     ///< what holds most of graphics cards' memory first
  name,    ///< in the order of the alphabet, whatever the case of ASCII letters
  start,   ///< the latest first
};

/// Whether a's row comes before b's. Always false for SortBy::memory: the lists already come
/// sorted by the memory that they are about.
bool comesBefore(const VordaProcess& a, const VordaProcess& b, SortBy sortBy);

/// What rows are sorted by next, when somebody presses the key for it again and again: memory, GPU
/// memory (where there are cards), name, start.
SortBy sortAfter(SortBy sortBy, bool hasGpus);
