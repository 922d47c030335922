#include "scanner/command_line/launchers.h"

#include <algorithm>
#include <unordered_map>

#include "scanner/command_line/program_names.h"
#include "scanner/command_line/program_paths.h"
#include "text/split.h"

namespace recognition {
namespace {

/// NAME=value, as env and sudo take it.
bool setsVariable(std::string_view word) {
  const auto equals = word.find('=');
  return equals != std::string_view::npos && equals > 0 &&
         word.substr(0, equals).find_first_of("/-. ") == std::string_view::npos;
}

/// Passes the launcher's verb, and its options before it. False when there is none.
bool takeVerb(const Launcher& launcher, Arguments& rest) {
  std::size_t first = 0;
  while (first < rest.size() && isOption(rest[first])) {
    const bool hasValue = isListed(launcher.valued, normalized(rest[first])) ||
                          isListed(launcher.valued, rest[first]);
    first += hasValue ? 2 : 1;
  }
  first = std::min(first, rest.size());
  for (std::string_view verbs = launcher.verbs; !verbs.empty();) {
    const auto words = listed(text::takeUntil('|', verbs));
    if (rest.size() - first >= words.size() &&
        std::ranges::equal(words, rest.subspan(first, words.size()))) {
      rest = rest.subspan(first + words.size());
      return true;
    }
  }
  return false;
}

/// Passes the launcher's own options and assignments. False when nothing is left.
bool skipOptions(const Launcher& launcher, Arguments& rest, bool& isModule) {
  while (!rest.empty()) {
    const std::string_view word = rest.front();
    if (word == "--") {
      rest = rest.subspan(1);
      break;
    }
    if (word == "-m" || word == "--module") {
      if (launcher.isDistributed || launcher.names == "debugpy" || launcher.names == "uv") {
        isModule = true;
        rest = rest.subspan(1);
        if (launcher.isDistributed) continue;
        break;
      }
    }
    if (!isOption(word)) {
      if (!setsVariable(word)) break;
      rest = rest.subspan(1);
      continue;
    }
    const std::string option = normalized(word);
    const bool hasValue = word.find('=') == std::string_view::npos &&
                          (launcher.valued == "*" ? !isListed(launcher.flags, option)
                                                  : isListed(launcher.valued, option) ||
                                                        isListed(launcher.valued, word));
    rest = rest.subspan(1);
    if (hasValue && !rest.empty() && !isOption(rest.front()) &&
        !(launcher.valued == "*" && isSource(rest.front()))) {
      rest = rest.subspan(1);
    }
  }
  return !rest.empty();
}

}  // namespace

const Launcher* launcherCalled(std::string_view name) {
  static const auto launchers = [] {
    std::unordered_map<std::string_view, const Launcher*> byName;
    for (const Launcher& launcher : kLaunchers) {
      for (const std::string_view word : listed(launcher.names)) byName.emplace(word, &launcher);
    }
    return byName;
  }();
  const auto found = launchers.find(name);
  return found == launchers.end() ? nullptr : found->second;
}

std::optional<Launched> launchedBy(const Launcher& launcher, Arguments line) {
  Launched launched{line.subspan(1)};
  Arguments& rest = launched.rest;
  if (!launcher.verbs.empty() && !takeVerb(launcher, rest)) return std::nullopt;
  if (!skipOptions(launcher, rest, launched.isModule)) return std::nullopt;
  rest = rest.subspan(std::min(rest.size(), static_cast<std::size_t>(launcher.operands)));
  if (rest.empty()) return std::nullopt;
  return launched;
}

}  // namespace recognition
