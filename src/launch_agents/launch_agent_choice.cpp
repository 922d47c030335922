#include "launch_agents/launch_agent_choice.h"

#include <re2/re2.h>

#include <cstdio>
#include <cstdlib>

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

}  // namespace LaunchAgentScanner
