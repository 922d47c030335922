#include "scanner/process_tree.h"

#include <algorithm>

namespace ProcessScanner {

void ProcessTree::add(std::int32_t pid, std::optional<std::int32_t> parent) {
  nodes_.push_back({pid, parent});
}

void ProcessTree::countAll() {
  std::ranges::sort(nodes_, {}, &Node::pid);
  for (const Node& node : nodes_) {
    if (Node* const parent = find(node.parent)) ++parent->uncountedChildren;
  }

  // From the leaves up: a process is counted for its parent once all its own are counted.
  const auto countedNode = [this](const Node& node) {
    counted_.push_back(static_cast<std::uint32_t>(&node - nodes_.data()));
  };
  counted_.clear();
  for (const Node& node : nodes_) {
    if (node.uncountedChildren == 0) countedNode(node);
  }
  while (!counted_.empty()) {
    const Node& node = nodes_[counted_.back()];
    counted_.pop_back();
    Node* const parent = find(node.parent);
    if (parent == nullptr) continue;
    parent->below += node.below + 1;
    if (--parent->uncountedChildren == 0) countedNode(*parent);
  }
}

std::size_t ProcessTree::below(std::int32_t pid) const {
  const auto node = std::ranges::lower_bound(nodes_, pid, {}, &Node::pid);
  return node != nodes_.end() && node->pid == pid ? node->below : 0;
}

std::optional<std::int32_t> ProcessTree::parentOf(std::int32_t pid) const {
  const auto node = std::ranges::lower_bound(nodes_, pid, {}, &Node::pid);
  return node != nodes_.end() && node->pid == pid ? node->parent : std::nullopt;
}

ProcessTree::Node* ProcessTree::find(std::optional<std::int32_t> pid) {
  if (!pid) return nullptr;
  const auto node = std::ranges::lower_bound(nodes_, *pid, {}, &Node::pid);
  return node != nodes_.end() && node->pid == *pid ? &*node : nullptr;
}

}  // namespace ProcessScanner
