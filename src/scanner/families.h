#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "scanner/lab_role.h"

namespace ProcessScanner {

/// What tells to which family a process belongs.
struct FamilyFacts {
  std::optional<std::uint64_t> startTime;  ///< platform::ProcessFacts::startTime
  std::optional<std::int32_t> parent;
  std::optional<std::int32_t> session;  ///< the pid that began its session
  std::int32_t pid = 0;
  LabRole role = LabRole::none;
  bool isBorder = false;  ///< what it starts are works of their own (family_borders.h)
};

/// Finds out which processes belong together: those of one piece of work, which are the tree
/// below the process that was started. First begin(), then add() for every process, then find(),
/// then the questions. It remembers the last scan, to find processes whose parent has ended since.
/// Costs as much as sorting the processes; parents that were never added, that are younger than
/// their child, and circles are ignored.
class Families {
 public:
  /// Starts a scan. `own`: Vorda's own process. It belongs to no family, and what started it
  /// (a desktop's session, an IDE) is a border, whatever its name.
  void begin(std::int32_t own);

  /// At most once for each pid.
  void add(const FamilyFacts& facts) { nodes_.push_back({.facts = facts}); }

  void find();

  /// The pid of the process that began the work; none for a process that works alone, or is a
  /// border.
  std::optional<std::int32_t> headOf(std::int32_t pid) const;

  /// Who started this process, or began its work, when that was seen alive, with its start time,
  /// and has ended since.
  std::optional<std::int32_t> leftBehindBy(std::int32_t pid) const;

  /// All that belong to somebody's family, in the order of the pids.
  template <typename Function>
  void forEachMember(Function function) const {
    for (const Node& node : nodes_) {
      if (isMember(node)) function(node.facts.pid, nodes_[node.head].facts.pid);
    }
  }

 private:
  using Index = std::uint32_t;  ///< in `nodes_`; there may be thousands
  static constexpr Index kNone = static_cast<Index>(-1);

  struct Node {
    FamilyFacts facts;
    Index above = kNone;  ///< who started it, within its family
    Index head = kNone;
    Index members = 0;  ///< of a head: how many, itself included
  };

  /// A process that was seen; known again by pid and start time.
  struct Seen {
    std::int32_t pid = 0;
    std::uint64_t startTime = 0;
  };

  /// What one scan leaves to the next about a process that has, or had, a parent in its family.
  struct Memory {
    Seen self;
    Seen starter = {};  ///< its parent; pid 0: never seen
    Seen first = {};    ///< the head of its family; pid 0: never seen
    std::optional<std::int32_t> leftBehindBy = std::nullopt;
  };

  bool isMember(const Node& node) const {
    return node.head != kNone && nodes_[node.head].members > 1;
  }
  Index indexOf(std::int32_t pid) const;
  Index indexOf(std::optional<std::int32_t> pid, const Node& child) const;
  Index aboveOf(const Node& node) const;
  void markOwnAncestors();
  void cutOffJobsOfAgents();
  void findHead(Index index);
  void rememberAll();
  Memory memoryOf(const Node& node, const Memory* before) const;
  bool isGone(const Seen& seen) const;
  Seen seen(const Node& node) const;

  std::int32_t own_ = 0;
  std::vector<Node> nodes_;       ///< by pid, once they are found
  std::vector<Memory> memories_;  ///< by pid
  std::vector<Memory> before_;    ///< those of the last scan
  std::vector<Index> way_;        ///< up to the head
};

}  // namespace ProcessScanner
