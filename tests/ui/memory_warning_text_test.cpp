#include "ui/memory_warning_text.h"

#include <gtest/gtest.h>

namespace {

constexpr SystemMemory::Snapshot kShort{
    .usedGB = 22.5, .totalGB = 24, .availableGB = 1.5, .stalls = platform::MemoryStalls{35.4, 8}};

TEST(MemoryWarning, NamesWhoHasGrown) {
  const MemoryCulprit culprit{{7, 70}, "train.py", 9216, 4096, 40};
  EXPECT_EQ(memoryWarning({MemoryTrouble::runsOut, culprit}, kShort),
            (MemoryWarning{"Memory is running out",
                           "1.50 GB of 24.00 GB left. train.py holds 9.00 GB, 4.00 GB more than "
                           "40 s ago.",
                           ProcessReference{7, 70}}));
}

TEST(MemoryWarning, NamesTheLargestWhereNobodyIsToBlame) {
  const MemoryCulprit culprit{{7, 70}, "train.py", 9216, 0, 0};
  EXPECT_EQ(memoryWarning({MemoryTrouble::stalls, culprit}, kShort),
            (MemoryWarning{"Processes wait for memory",
                           "Some 35%, all 8% of the last 10 s. The largest process is train.py "
                           "with 9.00 GB.",
                           ProcessReference{7, 70}}));
}

TEST(MemoryWarning, NamesNobodyWhereNobodyIsListed) {
  EXPECT_EQ(memoryWarning({MemoryTrouble::runsOut, std::nullopt}, kShort).text,
            "1.50 GB of 24.00 GB left.");
}

}  // namespace
