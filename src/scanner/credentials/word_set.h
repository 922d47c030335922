#pragma once

#include <cstddef>
#include <string_view>

#include "scanner/credentials/trie.h"
#include "text/ascii.h"

namespace credentials {

/// A set of words in lower case, in which texts are looked up without regard to case.
class WordSet {
 public:
  template <typename Words>
  explicit WordSet(const Words& words) : tree_({words.begin(), words.end()}) {}

  /// Whether the whole text is one of the words.
  bool holds(std::string_view text) const { return walk(text, true); }

  /// Whether the text begins with one of the words.
  bool holdsBeginningOf(std::string_view text) const { return walk(text, false); }

 private:
  bool walk(std::string_view text, bool isWhole) const {
    Trie::Node node = Trie::kRoot;
    for (const char c : text) {
      node = tree_.next(node, text::asciiLower(c));
      if (node == Trie::kNowhere) return false;
      if (!isWhole && tree_.keyAt(node) != Trie::kNoKey) return true;
    }
    return isWhole && tree_.keyAt(node) != Trie::kNoKey;
  }

  Trie tree_;
};

}  // namespace credentials
