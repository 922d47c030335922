// What is read from a file that was kept open is what a file opened now would say.
#include "platform/linux/kept_files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>
#include <string>

#include "fakes/row_name.h"
#include "tools/forked.h"
#include "tools/temp_folder.h"

namespace {

using platform::FileReader;
using platform::KeptFiles;

std::ptrdiff_t openFiles() {
  const std::filesystem::directory_iterator files("/proc/self/fd");
  return std::distance(begin(files), end(files));
}

/// A proc file system made of plain files, whose pids never change hands.
class KeptFilesTest : public testing::Test {
 protected:
  static constexpr std::uint32_t kOwner = 1000;

  void SetUp() override {
    for (const char* pid : {"1", "2", "3"}) folder_.write(std::string(pid) + "/cmdline", "old");
  }
  /// Puts another file in the place of the one that may be open.
  void replace(const std::string& name) {
    std::filesystem::remove(folder_ / name);
    folder_.write(name, "new");
  }

  TempFolder folder_;
  platform::ProcFs proc_{folder_.path().c_str()};
  FileReader reader_{100};
};

TEST_F(KeptFilesTest, ReadsAgainFromTheSameFile) {
  KeptFiles files(proc_, "cmdline", 10);
  EXPECT_EQ(files.read(2, kOwner, reader_), "old");
  const auto open = openFiles();
  replace("2/cmdline");
  EXPECT_EQ(files.read(2, kOwner, reader_), "old");
  EXPECT_EQ(openFiles(), open);
}

TEST_F(KeptFilesTest, OpensAnewForAnotherOwner) {
  KeptFiles files(proc_, "cmdline", 10);
  files.read(2, kOwner, reader_);
  replace("2/cmdline");
  EXPECT_EQ(files.read(2, kOwner + 1, reader_), "new");
}

TEST_F(KeptFilesTest, ClosesTheFilesOfProcessesThatAreGone) {
  KeptFiles files(proc_, "cmdline", 10);
  const auto before = openFiles();
  for (const int pid : {3, 1, 2}) files.read(pid, kOwner, reader_);
  EXPECT_EQ(openFiles(), before + 3);
  files.keepOnly({1, 3});
  EXPECT_EQ(openFiles(), before + 2);
  replace("2/cmdline");
  EXPECT_EQ(files.read(2, kOwner, reader_), "new");
}

TEST_F(KeptFilesTest, KeepsNoMoreThanItMay) {
  KeptFiles files(proc_, "cmdline", 2);
  const auto before = openFiles();
  for (int round = 0; round < 2; ++round) {
    for (const int pid : {1, 2, 3}) EXPECT_EQ(files.read(pid, kOwner, reader_), "old");
  }
  EXPECT_EQ(openFiles(), before + 2 + 1) << "and the one read last";
  files.read(1, kOwner, reader_);
  EXPECT_TRUE(files.wasKept());
  files.read(3, kOwner, reader_);
  EXPECT_FALSE(files.wasKept());
}

TEST_F(KeptFilesTest, KeepsNothingOfWhatIsNotThere) {
  KeptFiles files(proc_, "cmdline", 10);
  EXPECT_FALSE(files.read(4, kOwner, reader_));
  folder_.write("4/cmdline", "late");
  EXPECT_EQ(files.read(4, kOwner, reader_), "late");
}

struct FilesToKeepRow {
  const char* name;
  rlim_t limit;
  std::size_t files;
};

class FilesToKeep : public testing::TestWithParam<FilesToKeepRow> {};

TEST_P(FilesToKeep, LeavesEnoughDescriptors) {
  EXPECT_EQ(resultOfForked([] {
              rlimit limit = {};
              getrlimit(RLIMIT_NOFILE, &limit);
              limit.rlim_cur = GetParam().limit;
              if (setrlimit(RLIMIT_NOFILE, &limit) != 0) return 2;
              return platform::filesToKeep() == GetParam().files ? 0 : 1;
            }),
            0);
}

INSTANTIATE_TEST_SUITE_P(Limits, FilesToKeep,
                         testing::Values(FilesToKeepRow{"None", 0, 0}, FilesToKeepRow{"Few", 16, 0},
                                         FilesToKeepRow{"JustEnoughForOthers", 64, 0},
                                         FilesToKeepRow{"OneMore", 65, 1},
                                         FilesToKeepRow{"AQuarterIsLess", 200, 136},
                                         FilesToKeepRow{"AQuarterIsMore", 1024, 768}),
                         rowName<FilesToKeepRow>);

}  // namespace
