#include "rounds.h"

namespace bench {

Measurements alternate(const std::vector<Contestant>& contestants, int rounds,
                       std::chrono::seconds longest) {
  Measurements measurements;
  const auto end = std::chrono::steady_clock::now() + longest;
  for (const auto& contestant : contestants) contestant.run();
  for (std::size_t round = 0; round < static_cast<std::size_t>(rounds); ++round) {
    if (round > 0 && std::chrono::steady_clock::now() > end) break;
    for (std::size_t turn = 0; turn < contestants.size(); ++turn) {
      const auto& contestant = contestants[(round + turn) % contestants.size()];
      measurements[contestant.name].push_back(contestant.run());
    }
  }
  return measurements;
}

}  // namespace bench
