#include "platform/linux/procfs.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "tools/temp_folder.h"

namespace {

struct ProcfsRow {
  const char* name;
  const char* entry;  ///< what the folder holds
  const char* problem;
};

class ProblemOfProc : public testing::TestWithParam<ProcfsRow> {};

TEST_P(ProblemOfProc, IsThatItShowsNoProcess) {
  const TempFolder folder;
  folder.write(GetParam().entry, "");
  const std::string root = folder / "proc";
  const std::string problem = platform::problemOfProc(root.c_str());
  const std::string expected = GetParam().problem;
  EXPECT_EQ(problem, expected.empty() ? "" : "no process can be seen: " + root + expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ProblemOfProc,
    testing::Values(ProcfsRow{"Missing", "other", ": No such file or directory"},
                    ProcfsRow{"NoFolder", "proc", ": Not a directory"},
                    ProcfsRow{"WithoutProcesses", "proc/self", " is not mounted"},
                    ProcfsRow{"AProcess", "proc/17/stat", ""}),
    rowName<ProcfsRow>);

TEST(ProcOfThisMachine, HasNoProblem) {
  EXPECT_EQ(platform::problemOfProc(), "");
}

}  // namespace
