#include "platform/heap.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

double anonymousMB() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == "RssAnon:" && status >> kilobytes) return kilobytes / 1024;
  }
  return -1;
}

TEST(Heap, ReturnsWhatIsFreeInItsMidst) {
#if !defined(__GLIBC__) || defined(SANITIZED)
  GTEST_SKIP() << "another allocator than glibc's";
#endif
  constexpr std::size_t kBlocks = 8000;
  constexpr std::size_t kBytes = 8 << 10;  // whatever its place, it holds a whole page
  std::vector<std::unique_ptr<std::string>> blocks;
  for (std::size_t i = 0; i < kBlocks; ++i) {
    blocks.push_back(std::make_unique<std::string>(kBytes, 'x'));
  }
  const double full = anonymousMB();
  for (std::size_t i = 0; i < kBlocks; i += 2) blocks[i].reset();
  EXPECT_GT(anonymousMB(), full - 5) << "between blocks that are in use";
  platform::returnFreeMemory();
  EXPECT_LT(anonymousMB(), full - 12);
}

}  // namespace
