#include "launch_agents/launch_agent_scanner.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "launch_agents/launch_agent_choice.h"
#include "platform/launch_agents.h"

namespace LaunchAgentScanner {
namespace {

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

VordaLaunchAgent launchAgentOf(const platform::LaunchAgentFile& file) {
  return {.label = file.label,
          .plistPath = file.path,
          .program = programOf(file),
          .keepAlive = file.keepAlive};
}

std::vector<VordaLaunchAgent> sortedLaunchAgents(std::span<const platform::LaunchAgentFile> files) {
  std::vector<VordaLaunchAgent> launchAgents;
  launchAgents.reserve(files.size());
  std::ranges::transform(files, std::back_inserter(launchAgents), launchAgentOf);

  const auto ordinary =
      std::stable_partition(launchAgents.begin(), launchAgents.end(), isInteresting);
  std::ranges::stable_sort(launchAgents.begin(), ordinary, {}, &VordaLaunchAgent::label);
  std::ranges::stable_sort(ordinary, launchAgents.end(), {}, &VordaLaunchAgent::label);
  return launchAgents;
}

void setState(std::vector<VordaLaunchAgent>& launchAgents,
              const platform::LaunchAgentAnswer& answer) {
  for (VordaLaunchAgent& launchAgent : launchAgents) {
    const auto entry = answer.loaded.find(launchAgent.label);
    launchAgent.loaded = entry != answer.loaded.end();
    launchAgent.pid = launchAgent.loaded ? entry->second : std::nullopt;
    launchAgent.pidAskedAt = launchAgent.loaded ? answer.askedAt : 0;
  }
}

}  // namespace

std::vector<VordaLaunchAgent> scan() {
  RepeatedScan once;
  return once.scan();
}

const std::vector<VordaLaunchAgent>& RepeatedScan::scan() {
  const std::span<const platform::LaunchAgentFile> files = platform::launchAgentFiles();
  const platform::LaunchAgentAnswer* const answer = platform::loadedLaunchAgents(files);
  const bool isKnown = answer != nullptr;
  if (!isKnown || !std::ranges::equal(files, files_)) {
    files_.clear();
    all_.clear();
    ofInterest_.clear();
    if (!isKnown) return all_;
    files_.assign(files.begin(), files.end());
    all_ = sortedLaunchAgents(files);
    std::ranges::copy_if(all_, std::back_inserter(ofInterest_), isListed);
  }
  setState(all_, *answer);
  setState(ofInterest_, *answer);
  return all_;
}

}  // namespace LaunchAgentScanner
