#include "scanner/families.h"

#include <algorithm>

namespace ProcessScanner {

void Families::begin(std::int32_t own) {
  own_ = own;
  before_.swap(nodes_);
  nodes_.clear();
}

void Families::find() {
  constexpr auto pidOf = [](const Node& node) { return node.facts.pid; };
  if (!std::ranges::is_sorted(nodes_, {}, pidOf)) std::ranges::sort(nodes_, {}, pidOf);
  markOwnAncestors();
  for (Node& node : nodes_) node.above = aboveOf(node);
  cutOffJobsOfAgents();
  for (std::size_t i = 0; i < nodes_.size(); ++i) findHead(i);
  for (const Node& node : nodes_) {
    if (node.head != kNone) ++nodes_[node.head].members;
  }
  auto before = before_.cbegin();
  for (Node& node : nodes_) {
    while (before != before_.cend() && before->facts.pid < node.facts.pid) ++before;
    const bool isKnown = before != before_.cend() && before->facts.pid == node.facts.pid &&
                         node.facts.startTime && before->facts.startTime == node.facts.startTime;
    remember(node, isKnown ? &*before : nullptr);
  }
}

std::optional<std::int32_t> Families::headOf(std::int32_t pid) const {
  const std::size_t index = indexOf(pid);
  if (index == kNone || !isMember(nodes_[index])) return std::nullopt;
  return nodes_[nodes_[index].head].facts.pid;
}

std::optional<std::int32_t> Families::leftBehindBy(std::int32_t pid) const {
  const std::size_t index = indexOf(pid);
  return index == kNone ? std::nullopt : nodes_[index].leftBehindBy;
}

std::size_t Families::indexOf(std::int32_t pid) const {
  const auto node =
      std::ranges::lower_bound(nodes_, pid, {}, [](const Node& one) { return one.facts.pid; });
  return node != nodes_.end() && node->facts.pid == pid
             ? static_cast<std::size_t>(node - nodes_.begin())
             : kNone;
}

/// Of an elder of this child: one that is younger has only been given the elder's pid.
std::size_t Families::indexOf(std::optional<std::int32_t> pid, const Node& child) const {
  if (!pid || *pid == child.facts.pid) return kNone;
  const std::size_t index = indexOf(*pid);
  if (index == kNone) return kNone;
  const auto& started = nodes_[index].facts.startTime;
  return started && child.facts.startTime && *started > *child.facts.startTime ? kNone : index;
}

void Families::markOwnAncestors() {
  std::size_t index = indexOf(own_);
  for (std::size_t steps = 0; index != kNone && steps < nodes_.size(); ++steps) {
    nodes_[index].facts.isBorder = true;
    index = indexOf(nodes_[index].facts.parent, nodes_[index]);
  }
}

std::size_t Families::aboveOf(const Node& node) const {
  if (node.facts.isBorder) return kNone;
  constexpr std::int32_t kFirst = 1;  // takes in who has lost its parent
  const auto startsWork = [this](std::size_t index) {
    const FamilyFacts& facts = nodes_[index].facts;
    return facts.isBorder || (facts.pid == kFirst && facts.role == LabRole::none);
  };
  std::size_t above = indexOf(node.facts.parent, node);
  if (above == kNone || startsWork(above)) above = indexOf(node.facts.session, node);
  return above == kNone || startsWork(above) ? kNone : above;
}

/// What an agent was told to train is no part of the agent; the shell in between belongs to the
/// training.
void Families::cutOffJobsOfAgents() {
  constexpr int kMostBetween = 64;
  for (const Node& job : nodes_) {
    if (job.facts.role != LabRole::training) continue;
    std::size_t top = indexOf(job.facts.pid);
    for (int steps = 0; nodes_[top].above != kNone && steps < kMostBetween; ++steps) {
      const std::size_t above = nodes_[top].above;
      if (nodes_[above].facts.role == LabRole::agent) {
        nodes_[top].above = kNone;
        break;
      }
      if (nodes_[above].facts.role == LabRole::inference) break;
      top = above;
    }
  }
}

void Families::findHead(std::size_t index) {
  way_.clear();
  std::size_t top = index;
  while (nodes_[top].head == kNone && nodes_[top].above != kNone && way_.size() <= nodes_.size()) {
    way_.push_back(top);
    top = nodes_[top].above;
  }
  if (nodes_[top].facts.isBorder || way_.size() > nodes_.size()) return;  // or a circle
  const std::size_t head = nodes_[top].head == kNone ? top : nodes_[top].head;
  nodes_[top].head = head;
  for (const std::size_t member : way_) nodes_[member].head = head;
}

/// Notes who is above, or finds that who was is gone.
void Families::remember(Node& node, const Node* before) const {
  if (before != nullptr) {
    node.starter = before->starter;
    node.first = before->first;
    node.leftBehindBy = before->leftBehindBy;
    for (const Seen& one : {node.starter, node.first}) {
      if (!node.leftBehindBy && one.pid != 0 && isGone(one)) node.leftBehindBy = one.pid;
    }
  }
  if (node.head == kNone) return;
  if (node.above != kNone) node.starter = seen(nodes_[node.above]);
  if (&nodes_[node.head] != &node) node.first = seen(nodes_[node.head]);
}

bool Families::isGone(const Seen& seen) const {
  const std::size_t index = indexOf(seen.pid);
  return index == kNone || nodes_[index].facts.startTime != seen.startTime;
}

/// Nothing, where it could not be told from a later process of its pid.
Families::Seen Families::seen(const Node& node) const {
  if (!node.facts.startTime) return {};
  return {node.facts.pid, *node.facts.startTime};
}

}  // namespace ProcessScanner
