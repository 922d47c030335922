#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace credentials {

/// A set of short texts, the keys, as a tree that is walked one character at a time, so that a
/// text is compared with all of them at once. The tables of this room are such sets.
class Trie {
 public:
  using Node = std::uint16_t;
  static constexpr Node kRoot = 0;
  static constexpr Node kNowhere = 0xFFFF;  ///< no key begins like this
  static constexpr int kNoKey = -1;

  /// No key may be empty. Of equal keys the first counts. At most 65,000 characters in all.
  explicit Trie(const std::vector<std::string_view>& keys);

  /// The node that one more character leads to.
  Node next(Node node, char c) const {
    if (node == kRoot) return first_[static_cast<unsigned char>(c)];
    const Children children = children_[node];
    for (Node child = children.first; child < children.end; ++child) {
      if (character_[child] == c) return child;
    }
    return kNowhere;
  }

  /// The index of the key that ends here, or kNoKey.
  int keyAt(Node node) const { return key_[node]; }

 private:
  struct Children {
    Node first = 0;
    Node end = 0;
  };

  std::array<Node, 256> first_{};   // by character, from the root
  std::vector<Children> children_;  // by node; the children of a node are neighbours
  std::vector<char> character_;     // by node: the character that leads to it
  std::vector<std::int16_t> key_;   // by node
};

}  // namespace credentials
