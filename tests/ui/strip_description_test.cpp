#include "ui/strip_description.h"

#include <gtest/gtest.h>

namespace {

MemoryPressureView strip(double pressure, std::vector<Segment> segments) {
  MemoryPressureView view;
  view.pressure = pressure;
  view.segments = std::move(segments);
  return view;
}

TEST(StripDescription, namesEveryBarWithItsMemory) {
  EXPECT_EQ(stripDescription(strip(0.62, {{.label = "Ollama Server", .memMB = 4198},
                                          {.label = "firefox", .memMB = 312},
                                          {.label = "small", .memMB = 9.5}})),
            "Memory 62 percent used: Ollama Server 4.1 GB, firefox 312 MB, small 9.5 MB");
}

TEST(StripDescription, withoutBarsSaysHowMuchIsUsed) {
  EXPECT_EQ(stripDescription(strip(0.004, {})), "Memory 0 percent used");
  EXPECT_EQ(stripDescription(strip(1, {})), "Memory 100 percent used");
}

TEST(StripDescription, shortensLongNames) {
  const std::string words =
      stripDescription(strip(0.5, {{.label = std::string(100000, 'x'), .memMB = 100}}));
  EXPECT_EQ(words, "Memory 50 percent used: " + std::string(41, 'x') + "… 100 MB");
}

TEST(StripDescription, isOneHarmlessLine) {
  EXPECT_EQ(stripDescription(strip(0.5, {{.label = "a\nb\u202Ec", .memMB = 100}})),
            "Memory 50 percent used: a\uFFFDb\uFFFDc 100 MB");
}

}  // namespace
