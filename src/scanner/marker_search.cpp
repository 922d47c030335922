#include "scanner/marker_search.h"

#include <algorithm>
#include <limits>

namespace {

static_assert(std::ranges::none_of(kMarkers,
                                   [](std::string_view marker) { return marker.empty(); }));

constexpr std::size_t kLongestMarker = [] {
  std::size_t longest = 0;
  for (const std::string_view marker : kMarkers) longest = std::max(longest, marker.size());
  return longest;
}();

constexpr std::uint8_t byteOf(char c) {
  return static_cast<std::uint8_t>(c);
}

/// The greatest number of classes of bytes: one for each byte that occurs in a marker, and one for
/// all others.
constexpr std::size_t classCountOf(auto markers) {
  std::array<bool, 256> held{};
  for (const std::string_view marker : markers) {
    for (const char c : marker) held[byteOf(c)] = true;
  }
  return 1 + static_cast<std::size_t>(std::ranges::count(held, true));
}

/// The number of nodes in the markers' tree: one for each different beginning of a marker, and the
/// root.
constexpr std::size_t nodeCountOf(auto markers) {
  std::ranges::sort(markers);
  std::size_t count = 1;
  std::string_view previous;
  for (const std::string_view marker : markers) {
    const auto shared = std::ranges::mismatch(marker, previous).in1;
    count += static_cast<std::size_t>(marker.end() - shared);
    previous = marker;
  }
  return count;
}

/// The markers as a tree over the classes of their bytes. Node 0 is the root. Being no node's
/// child, it also stands for "no child".
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

  /// Gives every node a successor for every class: where it has no child, the successor of the
  /// longest proper suffix of its text that is a node too. Breadth first, so that the node of the
  /// suffix, which is shorter, is already complete.
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

}  // namespace

MarkerSearch::MarkerSearch() {
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

MarkerSet MarkerSearch::findIn(std::string_view text) const {
  // Each step depends on the one before, so that a single walk leaves the processor waiting most
  // of the time: four parts of the text are walked at once. They overlap by one byte less than the
  // longest marker, so that no marker is missed. In a short text all four are the same.
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

MarkerSet MarkerSearch::find(std::string_view text) {
  static const MarkerSearch search;
  return search.findIn(text);
}
