#include "scanner/credentials/trie.h"

#include <algorithm>
#include <numeric>

namespace credentials {

Trie::Trie(const std::vector<std::string_view>& keys) {
  std::vector<std::size_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });

  /// The sorted keys from `begin` to before `end` begin with the same `depth` characters, which
  /// lead to one node.
  struct Group {
    std::size_t begin;
    std::size_t end;
    std::size_t depth;
  };
  std::vector<Group> groups{{0, order.size(), 0}};
  character_.push_back('\0');
  for (std::size_t node = 0; node < groups.size(); ++node) {
    auto [begin, end, depth] = groups[node];
    const bool endsHere = begin < end && keys[order[begin]].size() == depth;
    key_.push_back(static_cast<std::int16_t>(endsHere ? static_cast<int>(order[begin]) : kNoKey));
    while (begin < end && keys[order[begin]].size() == depth) ++begin;

    const auto firstChild = static_cast<Node>(groups.size());
    while (begin < end) {
      const char character = keys[order[begin]][depth];
      std::size_t behind = begin;
      while (behind < end && keys[order[behind]][depth] == character) ++behind;
      groups.push_back({begin, behind, depth + 1});
      character_.push_back(character);
      begin = behind;
    }
    children_.push_back({firstChild, static_cast<Node>(groups.size())});
  }

  first_.fill(kNowhere);
  for (Node child = children_[kRoot].first; child < children_[kRoot].end; ++child) {
    first_[static_cast<unsigned char>(character_[child])] = child;
  }
}

}  // namespace credentials
