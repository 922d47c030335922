#include "scanner/process_tree.h"

#include <gtest/gtest.h>

#include <vector>

#include "fakes/row_name.h"

namespace {

struct Process {
  int pid;
  std::optional<int> parent;
};

struct TreeRow {
  const char* name;
  std::vector<Process> processes;
  std::vector<std::size_t> below;  ///< of each
};

class ProcessTreeTest : public testing::TestWithParam<TreeRow> {};

TEST_P(ProcessTreeTest, CountsWhatRunsBelow) {
  ProcessScanner::ProcessTree tree;
  for (const auto& [pid, parent] : GetParam().processes) tree.add(pid, parent);
  tree.countAll();
  std::vector<std::size_t> below;
  for (const auto& process : GetParam().processes) below.push_back(tree.below(process.pid));
  EXPECT_EQ(below, GetParam().below);
}

const TreeRow kProcessTreeRows[] = {
    {"Empty", {}, {}},
    {"ParentsUnknownOrNotAdded", {{1, {}}, {2, 99}, {3, 0}}, {0, 0, 0}},
    {"AChain", {{1, 0}, {2, 1}, {3, 2}, {4, 3}}, {3, 2, 1, 0}},
    {"SeveralChildren", {{1, 0}, {2, 1}, {3, 1}, {4, 3}, {5, 3}}, {4, 0, 2, 0, 0}},
    {"ListedInAnyOrder", {{4, 9}, {9, 5}, {5, {}}, {7, 9}}, {0, 2, 3, 0}},
    {"ItsOwnParent", {{1, 1}, {2, 1}}, {1, 0}},
    {"ACircle", {{1, 2}, {2, 1}, {3, 1}}, {1, 0, 0}},
};

INSTANTIATE_TEST_SUITE_P(Table, ProcessTreeTest, testing::ValuesIn(kProcessTreeRows),
                         rowName<TreeRow>);

TEST(ProcessTreeOfADeepChain, IsCountedInOneGo) {
  constexpr int kDeep = 200'000;  // a walk up from each would take minutes
  ProcessScanner::ProcessTree tree;
  for (int pid = 1; pid <= kDeep; ++pid) tree.add(pid, pid - 1);
  tree.countAll();
  EXPECT_EQ(tree.below(1), static_cast<std::size_t>(kDeep - 1));
}

}  // namespace
