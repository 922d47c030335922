#include "scanner/families.h"

#include <algorithm>

namespace ProcessScanner {

void Families::begin(std::int32_t own) {
  own_ = own;
  nodes_.clear();
  before_.swap(memories_);
  memories_.clear();
}

void Families::find() {
  constexpr auto pidOf = [](const Node& node) { return node.facts.pid; };
  if (!std::ranges::is_sorted(nodes_, {}, pidOf)) std::ranges::sort(nodes_, {}, pidOf);
  markOwnAncestors();
  for (Node& node : nodes_) node.above = aboveOf(node);
  cutOffJobsOfAgents();
  for (Index i = 0; i < nodes_.size(); ++i) findHead(i);
  for (const Node& node : nodes_) {
    if (node.head != kNone) ++nodes_[node.head].members;
  }
  rememberAll();
}

void Families::rememberAll() {
  auto before = before_.cbegin();
  for (const Node& node : nodes_) {
    while (before != before_.cend() && before->self.pid < node.facts.pid) ++before;
    const bool isKnown = before != before_.cend() && before->self.pid == node.facts.pid &&
                         node.facts.startTime == before->self.startTime;
    const Memory memory = memoryOf(node, isKnown ? &*before : nullptr);
    const bool holdsSomething = memory.starter.pid != 0 || memory.first.pid != 0;
    // One without a start time would not be known again.
    if (holdsSomething && memory.self.pid != 0) memories_.push_back(memory);
  }
}

std::optional<std::int32_t> Families::headOf(std::int32_t pid) const {
  const Index index = indexOf(pid);
  if (index == kNone || !isMember(nodes_[index])) return std::nullopt;
  return nodes_[nodes_[index].head].facts.pid;
}

std::optional<std::int32_t> Families::leftBehindBy(std::int32_t pid) const {
  const auto memory =
      std::ranges::lower_bound(memories_, pid, {}, [](const Memory& one) { return one.self.pid; });
  return memory != memories_.end() && memory->self.pid == pid ? memory->leftBehindBy : std::nullopt;
}

Families::Index Families::indexOf(std::int32_t pid) const {
  const auto node =
      std::ranges::lower_bound(nodes_, pid, {}, [](const Node& one) { return one.facts.pid; });
  return node != nodes_.end() && node->facts.pid == pid ? static_cast<Index>(node - nodes_.begin())
                                                        : kNone;
}

/// The parent of this child. A process that is younger than the child is not its parent: it was
/// given the pid of one that has ended.
Families::Index Families::indexOf(std::optional<std::int32_t> pid, const Node& child) const {
  if (!pid || *pid == child.facts.pid) return kNone;
  const Index index = indexOf(*pid);
  if (index == kNone) return kNone;
  const auto& started = nodes_[index].facts.startTime;
  return started && child.facts.startTime && *started > *child.facts.startTime ? kNone : index;
}

void Families::markOwnAncestors() {
  Index index = indexOf(own_);
  for (std::size_t steps = 0; index != kNone && steps < nodes_.size(); ++steps) {
    nodes_[index].facts.isBorder = true;
    index = indexOf(nodes_[index].facts.parent, nodes_[index]);
  }
}

Families::Index Families::aboveOf(const Node& node) const {
  if (node.facts.isBorder) return kNone;
  constexpr std::int32_t kFirst = 1;  // adopts every process whose parent has ended
  const auto startsWork = [this](Index index) {
    const FamilyFacts& facts = nodes_[index].facts;
    return facts.isBorder || (facts.pid == kFirst && facts.role == LabRole::none);
  };
  Index above = indexOf(node.facts.parent, node);
  if (above == kNone || startsWork(above)) above = indexOf(node.facts.session, node);
  return above == kNone || startsWork(above) ? kNone : above;
}

/// What an agent was told to train is no part of the agent; the shell in between belongs to the
/// training.
void Families::cutOffJobsOfAgents() {
  constexpr int kMostBetween = 64;
  for (const Node& job : nodes_) {
    if (job.facts.role != LabRole::training) continue;
    Index top = indexOf(job.facts.pid);
    for (int steps = 0; nodes_[top].above != kNone && steps < kMostBetween; ++steps) {
      const Index above = nodes_[top].above;
      if (nodes_[above].facts.role == LabRole::agent) {
        nodes_[top].above = kNone;
        break;
      }
      if (nodes_[above].facts.role == LabRole::inference) break;
      top = above;
    }
  }
}

void Families::findHead(Index index) {
  way_.clear();
  Index top = index;
  while (nodes_[top].head == kNone && nodes_[top].above != kNone && way_.size() <= nodes_.size()) {
    way_.push_back(top);
    top = nodes_[top].above;
  }
  const bool isCircle = way_.size() > nodes_.size();  // of parents
  if (nodes_[top].facts.isBorder || isCircle) return;
  const Index head = nodes_[top].head == kNone ? top : nodes_[top].head;
  nodes_[top].head = head;
  for (const Index member : way_) nodes_[member].head = head;
}

/// Remembers its parent and its family's head, and tells when one that was remembered has ended.
Families::Memory Families::memoryOf(const Node& node, const Memory* before) const {
  Memory memory = before == nullptr ? Memory{} : *before;
  memory.self = seen(node);
  for (const Seen& one : {memory.starter, memory.first}) {
    if (!memory.leftBehindBy && one.pid != 0 && isGone(one)) memory.leftBehindBy = one.pid;
  }
  if (node.head == kNone) return memory;
  if (node.above != kNone) memory.starter = seen(nodes_[node.above]);
  if (&nodes_[node.head] != &node) memory.first = seen(nodes_[node.head]);
  return memory;
}

bool Families::isGone(const Seen& seen) const {
  const std::size_t index = indexOf(seen.pid);
  return index == kNone || nodes_[index].facts.startTime != seen.startTime;
}

/// Nothing where the start time is unknown: a later process with the same pid would look the same.
Families::Seen Families::seen(const Node& node) const {
  if (!node.facts.startTime) return {};
  return {node.facts.pid, *node.facts.startTime};
}

}  // namespace ProcessScanner
