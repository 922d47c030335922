#include "scanner/fixed_rules/marker_search.h"

#include <limits>
#include <vector>

namespace {

static_assert(std::none_of(kMarkers.begin(), kMarkers.end(),
                           [](std::string_view marker) { return marker.empty(); }));

constexpr std::size_t kLongestMarker = [] {
  std::size_t longest = 0;
  for (const std::string_view marker : kMarkers) longest = std::max(longest, marker.size());
  return longest;
}();

constexpr std::uint8_t byteOf(char c) {
  return static_cast<std::uint8_t>(c);
}

/// How many classes of bytes the search tells apart, at the most: one for each byte that a
/// marker holds, and one for all others.
constexpr std::size_t classCountOf(auto markers) {
  std::array<bool, 256> held{};
  for (const std::string_view marker : markers) {
    for (const char c : marker) held[byteOf(c)] = true;
  }
  return 1 + static_cast<std::size_t>(std::count(held.begin(), held.end(), true));
}

/// How many nodes their tree has: one for each beginning that any of them has, and the root.
constexpr std::size_t nodeCountOf(auto markers) {
  std::sort(markers.begin(), markers.end());
  std::size_t count = 1;
  std::string_view previous;
  for (const std::string_view marker : markers) {
    const auto shared =
        std::mismatch(marker.begin(), marker.end(), previous.begin(), previous.end()).first;
    count += static_cast<std::size_t>(marker.end() - shared);
    previous = marker;
  }
  return count;
}

/// The markers as a tree of their bytes' classes. Node 0 is the root, and also means "none":
/// it is nobody's child.
class Trie {
 public:
  using Node = std::uint32_t;

  explicit Trie(std::size_t classCount) : classCount_(classCount) { addNode(); }

  std::size_t size() const { return ended.size(); }
  Node& next(Node node, std::size_t byteClass) { return next_[node * classCount_ + byteClass]; }

  Node child(Node node, std::size_t byteClass) {
    if (next(node, byteClass) == 0) {
      const Node added = addNode();
      next(node, byteClass) = added;
    }
    return next(node, byteClass);
  }

  /// Gives every node a successor for every class: where it has no child, the successor of
  /// the longest proper suffix of its text that is a node too. Breadth first, so that the
  /// suffix, being shorter, is complete.
  void completeWithSuffixes() {
    std::vector<Node> suffix(size(), 0);
    std::vector<Node> queue{0};
    for (std::size_t i = 0; i < queue.size(); ++i) {
      const Node node = queue[i];
      for (std::size_t c = 0; c < classCount_; ++c) {
        const Node afterSuffix = node == 0 ? 0 : next(suffix[node], c);
        Node& successor = next(node, c);
        if (successor == 0) {
          successor = afterSuffix;
        } else {
          suffix[successor] = afterSuffix;
          ended[successor].insert(ended[afterSuffix]);
          queue.push_back(successor);
        }
      }
    }
  }

  std::vector<MarkerSet> ended;  // by node: the markers that end there

 private:
  Node addNode() {
    next_.resize(next_.size() + classCount_, 0);
    ended.emplace_back();
    return static_cast<Node>(ended.size() - 1);
  }

  std::size_t classCount_;
  std::vector<Node> next_;
};

/// An Aho-Corasick automaton, its failure links resolved into one table, so that every byte costs
/// one look-up whatever the text holds.
class Automaton {
 public:
  Automaton();
  MarkerSet findIn(std::string_view text) const;

 private:
  /// A row of next_, named by where it starts. Rows that end a marker come last. Two bytes
  /// are enough for the table (the constructor proves it), and keep it small and fast.
  using Row = std::uint16_t;

  std::array<std::uint8_t, 256> classes_{};  // of bytes; those in no marker share class 0
  std::size_t classCount_ = 1;
  std::vector<Row> next_;         // by row and class
  Row firstEnding_ = 0;           // the first row that ends a marker
  std::vector<MarkerSet> ended_;  // by row from there on: the markers that end there
};

Automaton::Automaton() {
  static_assert(
      nodeCountOf(kMarkers) * classCountOf(kMarkers) - 1 <= std::numeric_limits<Row>::max(),
      "there are too many markers for the type of a row");
  for (const std::string_view marker : kMarkers) {
    for (const char c : marker) {
      std::uint8_t& byteClass = classes_[byteOf(c)];
      if (byteClass == 0) byteClass = static_cast<std::uint8_t>(classCount_++);
    }
  }

  Trie trie(classCount_);
  for (std::size_t i = 0; i < kMarkers.size(); ++i) {
    Trie::Node node = 0;
    for (const char c : kMarkers[i]) node = trie.child(node, classes_[byteOf(c)]);
    trie.ended[node].insert(i);
  }
  trie.completeWithSuffixes();

  std::vector<Trie::Node> order(trie.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<Trie::Node>(i);
  const auto firstEnding = std::stable_partition(
      order.begin(), order.end(), [&trie](Trie::Node node) { return trie.ended[node].empty(); });
  firstEnding_ =
      static_cast<Row>(static_cast<std::size_t>(firstEnding - order.begin()) * classCount_);

  std::vector<Row> rows(trie.size());
  for (std::size_t i = 0; i < order.size(); ++i) rows[order[i]] = static_cast<Row>(i * classCount_);
  next_.reserve(order.size() * classCount_);
  for (const Trie::Node node : order) {
    for (std::size_t c = 0; c < classCount_; ++c) next_.push_back(rows[trie.next(node, c)]);
  }
  for (auto node = firstEnding; node != order.end(); ++node) ended_.push_back(trie.ended[*node]);
}

MarkerSet Automaton::findIn(std::string_view text) const {
  // A step needs the step before it, so one walk alone leaves the processor waiting most of
  // the time: four stretches are walked side by side. They overlap by all but one byte of
  // the longest marker, so that none is missed (in a short text they are all the same).
  constexpr std::size_t kOverlap = kLongestMarker - 1;
  const std::size_t length = std::min(text.size(), (text.size() + 3 * kOverlap + 3) / 4);
  const std::size_t lastStart = text.size() - length;
  const char* const first = text.data();
  const char* const second = first + lastStart / 3;
  const char* const third = first + 2 * lastStart / 3;
  const char* const last = first + lastStart;

  MarkerSet found;
  const auto step = [this, &found](Row row, char c) {
    row = next_[row + classes_[byteOf(c)]];
    if (row >= firstEnding_) found.insert(ended_[(row - firstEnding_) / classCount_]);
    return row;
  };
  Row inFirst = 0;
  Row inSecond = 0;
  Row inThird = 0;
  Row inLast = 0;
  for (std::size_t i = 0; i < length; ++i) {
    inFirst = step(inFirst, first[i]);
    inSecond = step(inSecond, second[i]);
    inThird = step(inThird, third[i]);
    inLast = step(inLast, last[i]);
  }
  return found;
}

}  // namespace

MarkerSet MarkerSearch::find(std::string_view text) {
  static const Automaton automaton;
  return automaton.findIn(text);
}
