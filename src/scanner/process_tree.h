#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace ProcessScanner {

/// Counts the processes below each process. First every process is added, then count() is called,
/// then below() answers. Parents that were never added, and circles (possible because parents are
/// read at different moments), are ignored. Costs as much as sorting the processes.
class ProcessTree {
 public:
  /// Starts over; the memory is kept.
  void clear() { nodes_.clear(); }

  /// At most once for each pid.
  void add(std::int32_t pid, std::optional<std::int32_t> parent);

  void countAll();

  /// None when unknown, or when it was never added.
  std::optional<std::int32_t> parentOf(std::int32_t pid) const;

  /// How many processes are children of this one, their children, and so on.
  std::size_t below(std::int32_t pid) const;

 private:
  struct Node {
    std::int32_t pid = 0;
    std::optional<std::int32_t> parent;
    std::uint32_t uncountedChildren = 0;
    std::uint32_t below = 0;
  };

  Node* find(std::optional<std::int32_t> pid);

  std::vector<Node> nodes_;             ///< by pid, once they are counted
  std::vector<std::uint32_t> counted_;  ///< in `nodes_`
};

}  // namespace ProcessScanner
