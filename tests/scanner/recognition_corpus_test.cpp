#include "scanner/recognition_corpus.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "tools/joined.h"

namespace {

struct Goal {
  const char* file;
  int rolesOf100;
  int namesOf100;
};

/// What people would call the lines of a corpus, of 100. The ordinary ones have no role at all: not
/// one of them may be taken for a workload.
class Corpus : public testing::TestWithParam<Goal> {};

TEST_P(Corpus, IsRecognizedAsPeopleWould) {
  const Goal& goal = GetParam();
  const auto figures = corpusFigures(readCorpus(std::string(RECOGNITION_CORPUS) + "/" + goal.file));
  std::printf("%-14s roles %3d of %3d, names %3d of %3d\n", goal.file, figures.rolesRight,
              figures.lines, figures.namesRight, figures.named);
  const std::string wrong = joined(figures.wrong, "\n");
  EXPECT_GE(figures.rolesRight * 100, goal.rolesOf100 * figures.lines) << wrong;
  EXPECT_GE(figures.namesRight * 100, goal.namesOf100 * figures.named) << wrong;
}

INSTANTIATE_TEST_SUITE_P(All, Corpus,
                         testing::Values(Goal{"assorted.tsv", 97, 85},
                                         Goal{"collected.tsv", 97, 85},
                                         Goal{"ordinary.tsv", 100, 100}),
                         [](const auto& row) {
                           const std::string file = row.param.file;
                           return file.substr(0, file.find('.'));
                         });

TEST(Recognition, IsMostlyOfPositionAndStructure) {
  const recognition::Products nobody{std::span<const recognition::Product>{}};
  const auto figures = corpusFigures(readCorpus(RECOGNITION_CORPUS "/assorted.tsv"), nobody);
  std::printf("without the table of products: roles %d of %d\n", figures.rolesRight, figures.lines);
  EXPECT_GE(figures.rolesRight * 100, 70 * figures.lines) << joined(figures.wrong, "\n");
}

}  // namespace
