#include "scanner/roles/marker_search.h"

#include <limits>

namespace {

static_assert(std::ranges::none_of(kMarkers, [](auto marker) { return marker.empty(); }));

constexpr std::size_t kLongestMarker = [] {
  std::size_t longest = 0;
  for (const std::string_view marker : kMarkers) longest = std::max(longest, marker.size());
  return longest;
}();

constexpr std::uint8_t byteOf(char c) {
  return static_cast<std::uint8_t>(c);
}

/// Bytes that the search need not tell apart share a class: 0 for all that no marker holds.
struct ByteClasses {
  std::array<std::uint8_t, 256> of{};
  std::size_t count = 1;
};

constexpr ByteClasses kClasses = [] {
  ByteClasses classes;
  for (const std::string_view marker : kMarkers) {
    for (const char c : marker) {
      std::uint8_t& byteClass = classes.of[byteOf(c)];
      if (byteClass == 0) byteClass = static_cast<std::uint8_t>(classes.count++);
    }
  }
  return classes;
}();

/// How many nodes the tree of the markers has: one for each beginning that any of them has, and
/// the root.
constexpr std::size_t kNodeCount = [] {
  auto markers = kMarkers;
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
}();

/// Two bytes for a place in the table keep it small and fast.
using Place = std::uint16_t;
static_assert(kNodeCount * kClasses.count - 1 <= std::numeric_limits<Place>::max(),
              "there are too many markers for the type of a place");

/// The markers as a tree of their bytes' classes, in which every node has a successor for every
/// class. Node 0 is the root, and also means "none": it is nobody's child.
struct Tree {
  using Node = Place;

  std::array<std::array<Node, kClasses.count>, kNodeCount> next{};
  std::array<MarkerSet, kNodeCount> ended{};  // by node: the markers that end there
};

constexpr void addMarkers(Tree& tree) {
  Tree::Node last = 0;
  for (std::size_t i = 0; i < kMarkers.size(); ++i) {
    Tree::Node node = 0;
    for (const char c : kMarkers[i]) {
      Tree::Node& child = tree.next[node][kClasses.of[byteOf(c)]];
      if (child == 0) child = ++last;
      node = child;
    }
    tree.ended[node].insert(i);
  }
}

/// Where a node has no child, its successor is that of the longest proper suffix of its text that
/// is a node too. Breadth first, so that the suffix, being shorter, is complete.
constexpr void completeWithSuffixes(Tree& tree) {
  std::array<Tree::Node, kNodeCount> suffix{};
  std::array<Tree::Node, kNodeCount> queue{};
  std::size_t queued = 1;  // the root
  for (std::size_t i = 0; i < queued; ++i) {
    const Tree::Node node = queue[i];
    auto& successors = tree.next[node];
    if (node == 0) {
      for (const Tree::Node child : successors) {
        if (child != 0) queue[queued++] = child;
      }
      continue;
    }
    tree.ended[node].insert(tree.ended[suffix[node]]);
    const auto* afterSuffix = tree.next[suffix[node]].data();
    for (Tree::Node& successor : successors) {
      if (successor == 0) {
        successor = *afterSuffix;
      } else {
        suffix[successor] = *afterSuffix;
        queue[queued++] = successor;
      }
      ++afterSuffix;
    }
  }
}

constexpr Tree kTree = [] {
  Tree tree;
  addMarkers(tree);
  completeWithSuffixes(tree);
  return tree;
}();

constexpr auto kEndingCount =
    static_cast<std::size_t>(std::ranges::count(kTree.ended, false, &MarkerSet::empty));

/// An Aho-Corasick automaton, its failure links resolved into one table, so that every byte costs
/// one look-up whatever the text holds. Rows that end a marker come last.
struct Automaton {
  /// By row and class: where the next row starts.
  std::array<Place, kNodeCount * kClasses.count> next{};
  /// By row from the first that ends a marker on: the markers that end there.
  std::array<MarkerSet, kEndingCount> ended{};
};

constexpr std::size_t kFirstEnding = (kNodeCount - kEndingCount) * kClasses.count;

/// Made by the compiler: the program would spend time at its start, and memory of its own.
constexpr Automaton kAutomaton = [] {
  Automaton automaton;
  std::array<std::size_t, kNodeCount> rowOf{};
  std::size_t plain = 0;
  std::size_t ending = 0;
  for (std::size_t node = 0; node < kNodeCount; ++node) {
    if (kTree.ended[node].empty()) {
      rowOf[node] = plain++;
    } else {
      automaton.ended[ending] = kTree.ended[node];
      rowOf[node] = kNodeCount - kEndingCount + ending++;
    }
  }
  for (std::size_t node = 0; node < kNodeCount; ++node) {
    auto* place = &automaton.next[rowOf[node] * kClasses.count];
    for (const Tree::Node successor : kTree.next[node]) {
      *place++ = static_cast<Place>(rowOf[successor] * kClasses.count);
    }
  }
  return automaton;
}();

}  // namespace

MarkerSet MarkerSearch::find(std::string_view text) {
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
  const auto step = [&found](Place row, char c) {
    row = kAutomaton.next[row + kClasses.of[byteOf(c)]];
    if (row >= kFirstEnding) {
      found.insert(kAutomaton.ended[(row - kFirstEnding) / kClasses.count]);
    }
    return row;
  };
  Place inFirst = 0;
  Place inSecond = 0;
  Place inThird = 0;
  Place inLast = 0;
  for (std::size_t i = 0; i < length; ++i) {
    inFirst = step(inFirst, first[i]);
    inSecond = step(inSecond, second[i]);
    inThird = step(inThird, third[i]);
    inLast = step(inLast, last[i]);
  }
  return found;
}
