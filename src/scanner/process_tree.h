#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace ProcessScanner {

/// Which processes run below which: first every process is added, then all are counted, then
/// it answers. Parents that were never added, and circles (parents are read at different
/// moments), count for nobody. As dear as sorting the processes.
class ProcessTree {
 public:
  /// At most once for each pid.
  void add(std::int32_t pid, std::optional<std::int32_t> parent);

  void countAll();

  /// How many processes are children of this one, their children, and so on.
  std::size_t below(std::int32_t pid) const;

 private:
  struct Node {
    std::int32_t pid = 0;
    std::optional<std::int32_t> parent;
    std::size_t uncountedChildren = 0;
    std::size_t below = 0;
  };

  Node* find(std::optional<std::int32_t> pid);

  std::vector<Node> nodes_;  ///< by pid, once they are counted
};

}  // namespace ProcessScanner
