#include "launch_agents/launch_agent_choice.h"

#include <gtest/gtest.h>

namespace {

TEST(LaunchAgentChoice, FindsEachWordOfAIToolingInAnyCase) {
  for (const auto* word : {"hermes", "llama", "mlx", "ollama", "brevik", "zentho", "docker",
                           "halvek", "gateway", "GateWay", "com.DOCKER.helper"}) {
    EXPECT_TRUE(LaunchAgentScanner::isInteresting({.label = word})) << word;
    EXPECT_TRUE(LaunchAgentScanner::isInteresting({.label = "x", .program = word})) << word;
  }
  EXPECT_FALSE(LaunchAgentScanner::isInteresting({.label = "gate", .program = "way"}));
}

TEST(LaunchAgentChoice, ListsWhatIsKeptAliveOrInteresting) {
  EXPECT_TRUE(LaunchAgentScanner::isListed({.label = "sync", .keepAlive = true}));
  EXPECT_TRUE(LaunchAgentScanner::isListed({.label = "ollama"}));
  EXPECT_FALSE(LaunchAgentScanner::isListed({.label = "sync"}));
}

TEST(LaunchAgentChoice, ShowsWhatIsLoadedOrKeptAliveOrUnderWay) {
  EXPECT_TRUE(LaunchAgentScanner::hasRow({.loaded = true}, false));
  EXPECT_TRUE(LaunchAgentScanner::hasRow({.keepAlive = true}, false));
  EXPECT_TRUE(LaunchAgentScanner::hasRow({}, true));
  EXPECT_FALSE(LaunchAgentScanner::hasRow({}, false));
}

}  // namespace
