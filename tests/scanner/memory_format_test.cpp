#include "scanner/memory_format.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct MemoryFormatRow {
  const char* name;
  double mb;
  const char* detail;
  const char* compact;
};

class MemoryFormats : public testing::TestWithParam<MemoryFormatRow> {};

TEST_P(MemoryFormats, AreWrittenToTheCharacter) {
  EXPECT_EQ(MemoryFormat::detail(GetParam().mb), GetParam().detail);
  EXPECT_EQ(MemoryFormat::compact(GetParam().mb), GetParam().compact);
}

constexpr MemoryFormatRow kMemoryFormatRows[] = {
    {"Zero", 0, "0 MB", " 0.0 MB"},
    {"BelowTen", 9.94, "10 MB", " 9.9 MB"},
    {"RoundsUpToTenInTheOneDecimalForm", 9.96, "10 MB", "10.0 MB"},
    {"Ten", 10, "10 MB", "  10 MB"},
    {"ExactTieToEvenDown", 0.5, "0 MB", " 0.5 MB"},
    {"ExactTieToEvenUp", 1.5, "2 MB", " 1.5 MB"},
    {"ExactTieInTheOneDecimalForm", 0.25, "0 MB", " 0.2 MB"},
    {"Hundreds", 512, "512 MB", " 512 MB"},
    {"ThresholdIsTestedBeforeRounding", 1023.9, "1024 MB", "1024 MB"},
    {"OneGigabyte", 1024, "1.00 GB", " 1.0 GB"},
    {"TwoGigabytes", 2048, "2.00 GB", " 2.0 GB"},
    {"Wide", 1024 * 1024, "1024.00 GB", "1024.0 GB"},
};

TEST(MemoryInASentence, HasNoBlanksBeforeIt) {
  EXPECT_EQ(MemoryFormat::inSentence(9.94), "9.9 MB");
  EXPECT_EQ(MemoryFormat::inSentence(10), "10 MB");
  EXPECT_EQ(MemoryFormat::inSentence(1024 * 1024), "1024.0 GB");
}

INSTANTIATE_TEST_SUITE_P(Table, MemoryFormats, testing::ValuesIn(kMemoryFormatRows),
                         rowName<MemoryFormatRow>);

}  // namespace
