#include "launch_agents/launch_agent_scanner.h"

#include <re2/re2.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <span>

#include "platform/launch_agents.h"

namespace LaunchAgentScanner {
namespace {

const RE2& interesting() {
  static const RE2 pattern("(?i)(hermes|llama|mlx|ollama|brevik|zentho|docker|halvek|gateway)");
  if (!pattern.ok()) {
    std::fputs("vorda: the launch agent pattern does not compile\n", stderr);
    std::abort();
  }
  return pattern;
}

std::string programOf(const platform::LaunchAgentFile& file) {
  constexpr std::size_t kShownWords = 4;
  const std::span words(file.programArguments);
  std::string program;
  for (const auto& word : words.first(std::min(words.size(), kShownWords))) {
    if (&word != words.data()) program += ' ';
    program += word;
  }
  return program;
}

VordaLaunchAgent joined(const platform::LaunchAgentFile& file,
                        const platform::LaunchAgentAnswer& answer) {
  VordaLaunchAgent launchAgent{.label = file.label,
                               .plistPath = file.path,
                               .program = programOf(file),
                               .keepAlive = file.keepAlive};
  if (const auto entry = answer.loaded.find(file.label); entry != answer.loaded.end()) {
    launchAgent.loaded = true;
    launchAgent.pid = entry->second;
    launchAgent.pidAskedAt = answer.askedAt;
  }
  return launchAgent;
}

}  // namespace

bool isInteresting(const VordaLaunchAgent& launchAgent) {
  return RE2::PartialMatch(launchAgent.label + " " + launchAgent.program, interesting());
}

bool isListed(const VordaLaunchAgent& launchAgent) {
  return launchAgent.keepAlive || isInteresting(launchAgent);
}

bool hasRow(const VordaLaunchAgent& launchAgent, bool isUnderWay) {
  return launchAgent.loaded || launchAgent.keepAlive || isUnderWay;
}

std::vector<VordaLaunchAgent> scan() {
  const std::vector<platform::LaunchAgentFile> files = platform::launchAgentFiles();
  const auto answer = platform::loadedLaunchAgents(files);
  if (!answer) return {};

  std::vector<VordaLaunchAgent> launchAgents;
  launchAgents.reserve(files.size());
  std::ranges::transform(files, std::back_inserter(launchAgents),
                         [&answer](const auto& file) { return joined(file, *answer); });

  const auto ordinary =
      std::stable_partition(launchAgents.begin(), launchAgents.end(), isInteresting);
  std::ranges::stable_sort(launchAgents.begin(), ordinary, {}, &VordaLaunchAgent::label);
  std::ranges::stable_sort(ordinary, launchAgents.end(), {}, &VordaLaunchAgent::label);
  return launchAgents;
}

}  // namespace LaunchAgentScanner
