#include "scanner/roles/marker_search.h"

#include <gtest/gtest.h>

#include <string>

namespace {

MarkerSet only(std::size_t index) {
  MarkerSet set;
  set.insert(index);
  return set;
}

TEST(MarkerSearch, FindsEveryMarkerWhereverItStands) {
  for (std::size_t i = 0; i < kMarkers.size(); ++i) {
    for (const std::size_t before : {0U, 1U, 7U, 30U, 200U}) {
      for (const std::size_t behind : {0U, 1U, 9U, 100U}) {
        const std::string text =
            std::string(before, '\x01') + std::string(kMarkers[i]) + std::string(behind, '\x01');
        EXPECT_TRUE(MarkerSearch::find(text).intersects(only(i)))
            << kMarkers[i] << " after " << before << " before " << behind;
      }
    }
  }
}

TEST(MarkerSearch, MissesNoPlaceInATextOfAnyLength) {
  constexpr std::string_view kLongest = "text-generation-inference";
  for (std::size_t size = kLongest.size(); size < 260; ++size) {
    for (std::size_t start = 0; start + kLongest.size() <= size; ++start) {
      std::string text(size, '\x01');
      text.replace(start, kLongest.size(), kLongest);
      ASSERT_EQ(MarkerSearch::find(text), MarkerSet("text-generation-inference"))
          << size << " bytes, from " << start;
    }
  }
}

TEST(MarkerSearch, FindsMarkersInsideAndAcrossEachOther) {
  EXPECT_EQ(MarkerSearch::find("ollama servers"), MarkerSet({"ollama serve", "serve", "server"}));
  EXPECT_EQ(MarkerSearch::find("qloraconfig"), MarkerSet({"qlora", "lora", "loraconfig"}));
}

TEST(MarkerSearch, FindsNothingElse) {
  EXPECT_TRUE(MarkerSearch::find("").empty());
  EXPECT_TRUE(MarkerSearch::find("mc").empty());
  EXPECT_TRUE(MarkerSearch::find("LORA m cp d-po serv\xFF"
                                 "e")
                  .empty());
}

TEST(MarkerSet, HoldsWhatItWasMadeOf) {
  constexpr MarkerSet kSet{"lora", "mlx"};
  EXPECT_TRUE(kSet.intersects("lora"));
  EXPECT_TRUE(kSet.intersects({"vllm", "mlx"}));
  EXPECT_FALSE(kSet.intersects("vllm"));
  EXPECT_FALSE(kSet.empty());
  EXPECT_TRUE(MarkerSet().empty());
}

}  // namespace
