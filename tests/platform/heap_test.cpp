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
#if !defined(__GLIBC__) || defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "another allocator than glibc's";
#endif
  constexpr std::size_t kBlocks = 4000;
  constexpr std::size_t kBytes = 8 << 10;
  const double before = anonymousMB();
  ASSERT_GT(before, 0);
  std::vector<std::unique_ptr<std::string>> blocks;
  for (std::size_t i = 0; i < kBlocks; ++i) {
    blocks.push_back(std::make_unique<std::string>(kBytes, 'x'));
  }
  EXPECT_GT(anonymousMB(), before + 25);
  blocks.erase(blocks.begin(), blocks.end() - 1);  // the last one stays at the end of the heap
  EXPECT_GT(anonymousMB(), before + 25);
  platform::returnFreeMemory();
  EXPECT_LT(anonymousMB(), before + 5);
}

}  // namespace
