#include "scanner/command_line/launchers.h"

#include <algorithm>
#include <unordered_map>

#include "scanner/command_line/program_names.h"
#include "scanner/command_line/program_paths.h"

namespace recognition {
namespace {

/// NAME=value, as env and sudo take it.
bool isAssignment(std::string_view word) {
  const auto equals = word.find('=');
  return equals != std::string_view::npos && equals > 0 &&
         word.substr(0, equals).find_first_of("/-. ") == std::string_view::npos;
}

/// Passes the carrier's verb, and its options before it. False when there is none.
bool takeVerb(const Carrier& carrier, Arguments& rest) {
  std::size_t first = 0;
  while (first < rest.size() && isOption(rest[first])) {
    const bool hasValue =
        isListed(carrier.valued, normalized(rest[first])) || isListed(carrier.valued, rest[first]);
    first += hasValue ? 2 : 1;
  }
  first = std::min(first, rest.size());
  for (std::string_view verbs = carrier.verbs; !verbs.empty();) {
    const auto bar = verbs.find('|');
    const auto words = listed(verbs.substr(0, bar));
    verbs = bar == std::string_view::npos ? std::string_view() : verbs.substr(bar + 1);
    if (rest.size() - first >= words.size() &&
        std::equal(words.begin(), words.end(), rest.begin() + static_cast<long>(first))) {
      rest = rest.subspan(first + words.size());
      return true;
    }
  }
  return false;
}

/// Passes the carrier's own options and assignments. False when nothing is left.
bool skipOptions(const Carrier& carrier, Arguments& rest, bool& isModule) {
  while (!rest.empty()) {
    const std::string_view word = rest.front();
    if (word == "--") {
      rest = rest.subspan(1);
      break;
    }
    if (word == "-m" || word == "--module") {
      if (carrier.isDistributed || carrier.names == "debugpy" || carrier.names == "uv") {
        isModule = true;
        rest = rest.subspan(1);
        if (carrier.isDistributed) continue;
        break;
      }
    }
    if (!isOption(word)) {
      if (!isAssignment(word)) break;
      rest = rest.subspan(1);
      continue;
    }
    const std::string option = normalized(word);
    const bool hasValue = word.find('=') == std::string_view::npos &&
                          (carrier.valued == "*" ? !isListed(carrier.flags, option)
                                                 : isListed(carrier.valued, option) ||
                                                       isListed(carrier.valued, word));
    rest = rest.subspan(1);
    if (hasValue && !rest.empty() && !isOption(rest.front()) &&
        !(carrier.valued == "*" && isSource(rest.front()))) {
      rest = rest.subspan(1);
    }
  }
  return !rest.empty();
}

}  // namespace

const Carrier* carrierCalled(std::string_view name) {
  static const auto carriers = [] {
    std::unordered_map<std::string_view, const Carrier*> byName;
    for (const Carrier& carrier : kCarriers) {
      for (const std::string_view word : listed(carrier.names)) byName.emplace(word, &carrier);
    }
    return byName;
  }();
  const auto found = carriers.find(name);
  return found == carriers.end() ? nullptr : found->second;
}

std::optional<Carriage> carriage(const Carrier& carrier, Arguments line) {
  Carriage carried{line.subspan(1)};
  Arguments& rest = carried.rest;
  if (!carrier.verbs.empty() && !takeVerb(carrier, rest)) return std::nullopt;
  if (!skipOptions(carrier, rest, carried.isModule)) return std::nullopt;
  rest = rest.subspan(std::min(rest.size(), static_cast<std::size_t>(carrier.operands)));
  if (rest.empty()) return std::nullopt;
  return carried;
}

}  // namespace recognition
