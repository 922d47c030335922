#include <gtest/gtest.h>

#include "scanner/labelled_lines.h"

namespace {

/// How many of 100 lines may be wrong.
int goalOf(const std::string& kind) {
  return kind == "format" ? 10 : 2;
}

class CredentialGoals : public testing::TestWithParam<const char*> {};

TEST_P(CredentialGoals, AreReachedByEveryClass) {
  const auto all = maskFigures(readLabelledLines(std::string(CREDENTIAL_LINES) + GetParam()));
  EXPECT_EQ(all.size(), 4U);
  for (const auto& [kind, figures] : all) {
    EXPECT_LE(figures.wrong * 100, goalOf(kind) * figures.lines) << kind;
    if (HasFailure()) {
      for (const auto& line : figures.wrongLines) ADD_FAILURE() << line;
    }
  }
}

/// What became of the held lines was counted, never looked at, while the maskers were written: they
/// tell what the maskers are worth on lines that nobody has seen.
INSTANTIATE_TEST_SUITE_P(Lines, CredentialGoals, testing::Values("/tuned.tsv", "/held.tsv"),
                         [](const auto& row) { return row.index == 0 ? "Tuned" : "Held"; });

TEST(CredentialGoals, AreMeasuredOnManyLines) {
  const auto tuned = readLabelledLines(std::string(CREDENTIAL_LINES) + "/tuned.tsv").size();
  const auto held = readLabelledLines(std::string(CREDENTIAL_LINES) + "/held.tsv").size();
  EXPECT_GE(tuned + held, 600U);
  EXPECT_GE(held * 5, tuned + held);
}

}  // namespace
