#include "platform/linux/process_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <tuple>

#include "fakes/row_name.h"
#include "tools/child_process.h"
#include "tools/temp_folder.h"

namespace {

using namespace std::string_literals;
using platform::ProcessFacts;
using testing::ElementsAre;
using testing::IsEmpty;

/// A proc file system made of plain files.
class ProcessReaderTest : public testing::Test {
 protected:
  void setSwap(int totalKB, int freeKB) {
    folder_.write("meminfo", "SwapTotal: " + std::to_string(totalKB) +
                                 " kB\nSwapFree: " + std::to_string(freeKB) + " kB\n");
  }

  TempFolder folder_;
  platform::ProcFs proc_{folder_.path().c_str()};
  platform::ProcessReader reader_{proc_};
  ProcessFacts facts_;
};

TEST_F(ProcessReaderTest, ListsNumericNamesAscending) {
  for (const char* name : {"9", "100", "20", "1"}) folder_.write(std::string(name) + "/comm", "");
  for (const char* name : {"self", "0", "-5", "7a", "99999999999", "sys"}) {
    folder_.write(std::string(name) + "/comm", "");
  }
  EXPECT_THAT(reader_.pids(), ElementsAre(1, 9, 20, 100));
}

TEST_F(ProcessReaderTest, ReadsArgumentsAndOwner) {
  folder_.write("7/cmdline", "python3\0-m\0vllm\0"s);
  ASSERT_TRUE(reader_.read(7, facts_));
  EXPECT_EQ(facts_.name, "python3");
  EXPECT_EQ(facts_.commandLine, "python3 -m vllm");
  EXPECT_THAT(facts_.arguments, ElementsAre("python3", "-m", "vllm"));
  EXPECT_EQ(facts_.effectiveUid, geteuid());
}

TEST_F(ProcessReaderTest, AsksTheExecutableWhatATitleIs) {
  folder_.write("7/cmdline", "nginx: master process /usr/sbin/nginx\0\0\0"s);
  folder_.link("7/exe", "/usr/sbin/nginx (deleted)");
  ASSERT_TRUE(reader_.read(7, facts_));
  EXPECT_EQ(facts_.name, "nginx");
  EXPECT_THAT(facts_.arguments, ElementsAre("nginx:", "master", "process", "/usr/sbin/nginx"));
}

TEST_F(ProcessReaderTest, AsksCommWhenTheExecutableIsHidden) {
  folder_.write("7/cmdline", "sshd: ada@pts/0\0"s);
  folder_.write("7/comm", "sshd\n");
  ASSERT_TRUE(reader_.read(7, facts_));
  EXPECT_EQ(facts_.name, "sshd");
}

TEST_F(ProcessReaderTest, NamesAProcessWithoutArgumentsAfterItsExecutable) {
  folder_.write("7/cmdline", "");
  folder_.link("7/exe", "/opt/tool (deleted)");
  ASSERT_TRUE(reader_.read(7, facts_));
  EXPECT_EQ(facts_.name, "tool");
  EXPECT_THAT(facts_.arguments, IsEmpty());
  EXPECT_EQ(facts_.commandLine, "");
}

TEST_F(ProcessReaderTest, PassesOverWhatIsNoProgram) {
  folder_.write("2/cmdline", "");  // a kernel thread or a zombie: no executable
  folder_.write("2/comm", "kthreadd\n");
  EXPECT_FALSE(reader_.read(2, facts_));
  EXPECT_FALSE(reader_.read(3, facts_)) << "gone";
  folder_.write("4/stat", "");
  EXPECT_FALSE(reader_.read(4, facts_)) << "hidden: nothing of it can be read";
}

TEST_F(ProcessReaderTest, LooksForSharedMemoryOnlyWhereThereIsMuch) {
  setSwap(100, 100);
  const auto pages = [](std::uint64_t megabytes) {
    return std::to_string((megabytes << 20) / static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
  };
  // Who reads this would find a lot.
  folder_.write("7/status", "RssAnon: 1 kB\nRssFile: 1048576 kB\nRssShmem: 524288 kB\n");
  folder_.write("7/statm", "900000 " + pages(300) + " " + pages(255) + " 1 0 1 0\n");
  reader_.pids();
  reader_.footprint(7);
  EXPECT_FALSE(reader_.sharedMemory(7));
  folder_.write("7/statm", "900000 " + pages(300) + " " + pages(256) + " 1 0 1 0\n");
  reader_.footprint(7);
  const auto shared = reader_.sharedMemory(7);
  ASSERT_TRUE(shared);
  EXPECT_EQ(shared->fileBytes, 1ULL << 30);
  EXPECT_EQ(shared->sharedBytes, 512ULL << 20);
  EXPECT_FALSE(reader_.sharedMemory(8)) << "another than was asked last";
}

TEST_F(ProcessReaderTest, CountsResidentMemoryWithoutSwap) {
  setSwap(100, 100);
  folder_.write("7/statm", "5000 1300 300 20 0 700 0\n");
  reader_.pids();
  EXPECT_EQ(reader_.footprint(7), 1000 * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
}

TEST_F(ProcessReaderTest, CountsSwappedMemoryWhereThereIsSome) {
  setSwap(100, 50);
  folder_.write("7/statm", "5000 1300 300 20 0 700 0\n");
  folder_.write("7/status", "VmRSS:\t9 kB\nRssAnon:\t4 kB\nVmSwap:\t3 kB\n");
  reader_.pids();
  EXPECT_EQ(reader_.footprint(7), 7 * 1024U);
}

TEST_F(ProcessReaderTest, LooksAtSwapAnewForEachListing) {
  folder_.write("7/statm", "5000 1300 1299 20 0 700 0\n");
  folder_.write("7/status", "VmRSS:\t9 kB\nRssAnon:\t4 kB\nVmSwap:\t3 kB\n");
  EXPECT_EQ(reader_.footprint(7), 7 * 1024U) << "never listed: the careful way";
  setSwap(0, 0);
  reader_.pids();
  EXPECT_EQ(reader_.footprint(7), static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
  setSwap(9, 0);
  reader_.pids();
  EXPECT_EQ(reader_.footprint(7), 7 * 1024U);
}

TEST_F(ProcessReaderTest, HasNoFiguresOfAProcessThatIsGone) {
  EXPECT_FALSE(reader_.footprint(7));
  EXPECT_FALSE(reader_.identity(7));
  EXPECT_FALSE(reader_.effectiveUid(7));
}

TEST_F(ProcessReaderTest, IdentifiesAProcessByItsStartAndWhatItRuns) {
  const auto identityAs = [this](const std::string& ticks, const char* line, const char* program) {
    folder_.write("7/stat", "7 (a) S 1 7 7 0 7 0 1 2 3 4 5 6 7 8 20 0 1 0 " + ticks + " 9 9 9\n");
    folder_.write("7/cmdline", line);
    std::filesystem::remove(folder_ / "7/exe");
    folder_.link("7/exe", program);
    return platform::ProcessReader(proc_).identity(7);
  };
  const auto one = identityAs("12345", "a", "/bin/a");
  ASSERT_TRUE(one);
  EXPECT_EQ(identityAs("12345", "a", "/bin/a"), one);
  EXPECT_NE(identityAs("12346", "a", "/bin/a"), one);
  EXPECT_NE(identityAs("12345", "b", "/bin/a"), one);
  EXPECT_NE(identityAs("12345", "a", "/bin/b"), one);
}

TEST_F(ProcessReaderTest, HasNoIdentityOfAProcessWhoseStartIsHidden) {
  folder_.write("7/cmdline", "a");
  ASSERT_TRUE(reader_.read(7, facts_));
  EXPECT_TRUE(reader_.confirm(7, facts_)) << "it stays listed";
  EXPECT_FALSE(facts_.identity);
}

TEST_F(ProcessReaderTest, AsksForTheParentAgainWhenThatIsGone) {
  const auto writeChild = [this](const char* parent) {
    folder_.write("7/stat", std::string("7 (a) S ") + parent +
                                " 7 7 0 7 0 1 2 3 4 5 6 7 8 20 0 1 0 50 9 9 9\n");
  };
  const auto parentNow = [this] {
    reader_.pids();
    for (const int pid : {5, 7}) std::ignore = reader_.read(pid, facts_);
    return facts_.parent;
  };
  folder_.write("5/cmdline", "parent");
  folder_.write("5/stat", "5 (p) S 1 5 5 0 5 0 1 2 3 4 5 6 7 8 20 0 1 0 40 9 9 9\n");
  folder_.write("7/cmdline", "child");
  writeChild("5");
  EXPECT_EQ(parentNow(), 5);

  writeChild("1");
  EXPECT_EQ(parentNow(), 5) << "not asked while the parent lives";
  std::filesystem::remove_all(folder_ / "5");
  reader_.pids();
  ASSERT_TRUE(reader_.read(7, facts_));
  EXPECT_EQ(facts_.parent, 1);
}

struct Keeping {
  const char* name;
  rlim_t mostOpenFiles;
};
constexpr Keeping kKeepings[] = {{"KeptFiles", 1024}, {"NoFilesKept", 64}};

std::unique_ptr<platform::ProcessReader> readerThatKeeps(
    const Keeping& keeping, const platform::ProcFs& proc, platform::IdleWatch::CpuTime cpuTime,
    platform::ProcessReader::IdentitySource identitySource = nullptr) {
  rlimit before = {};
  getrlimit(RLIMIT_NOFILE, &before);
  const rlimit meanwhile{std::min(keeping.mostOpenFiles, before.rlim_max), before.rlim_max};
  setrlimit(RLIMIT_NOFILE, &meanwhile);
  auto reader = std::make_unique<platform::ProcessReader>(proc, identitySource, cpuTime);
  setrlimit(RLIMIT_NOFILE, &before);
  return reader;
}

/// Processes whose CPU time is scripted: they can be changed behind the reader's back.
class RestingProcessTest : public ProcessReaderTest, public testing::WithParamInterface<Keeping> {
 protected:
  RestingProcessTest() {
    cpuTime_ = 100;
    setSwap(0, 0);
    folder_.write("13/stat", "13 (a) S 1 13 13 0 13 0 1 2 3 4 5 6 7 8 20 0 1 0 50 9 9 9\n");
    write("one", 1000);
    look();
  }

  void write(const char* line, int pages) {
    folder_.write("13/cmdline", line);
    folder_.write("13/statm", "5000 " + std::to_string(pages + 300) + " 300 20 0 700 0\n");
    folder_.write("13/status", "RssAnon: " + std::to_string(pages) + " kB\nVmSwap: 0 kB\n");
  }

  /// As a scan does, the first time with the command line.
  void look() {
    reader_->pids();
    ASSERT_TRUE(reader_->lookAt(13, facts_));
    if (fingerprint_ != facts_.fingerprint) {
      ASSERT_TRUE(reader_->readCommandLine(facts_));
    }
    fingerprint_ = facts_.fingerprint;
    footprint_ = reader_->footprint(13);
    ASSERT_TRUE(reader_->confirm(13, facts_));
  }

  static std::optional<std::uint64_t> cpuTime(std::int32_t) { return cpuTime_; }
  static inline std::uint64_t cpuTime_ = 0;

  const std::uint64_t page_ = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
  std::unique_ptr<platform::ProcessReader> reader_ = readerThatKeeps(GetParam(), proc_, cpuTime);
  std::optional<platform::Fingerprint> fingerprint_;
  std::optional<std::uint64_t> footprint_;
};

TEST_P(RestingProcessTest, AreNotReadUntilTheyRun) {
  const auto identity = facts_.identity;
  write("two", 2000);
  look();
  EXPECT_EQ(facts_.commandLine, "one");
  EXPECT_EQ(footprint_, 1000 * page_);
  EXPECT_EQ(facts_.identity, identity);
  EXPECT_EQ(facts_.effectiveUid, geteuid());
  EXPECT_EQ(facts_.parent, 1);

  cpuTime_ = 101;
  look();
  EXPECT_EQ(facts_.commandLine, "two");
  EXPECT_EQ(footprint_, 2000 * page_);
}

TEST_P(RestingProcessTest, AreReadNowAndThenAllTheSame) {
  write("two", 2000);
  int scans = 1;
  for (; facts_.commandLine != "two" && scans < 100; ++scans) look();
  EXPECT_LE(scans, platform::IdleWatch::kMostSkips + 2);
  EXPECT_EQ(footprint_, 2000 * page_);
}

TEST_P(RestingProcessTest, AreReadWhenTheirCommandLineIsWantedAfterAll) {
  write("two", 2000);
  reader_->pids();
  ASSERT_TRUE(reader_->lookAt(13, facts_));
  ASSERT_TRUE(reader_->readCommandLine(facts_));
  EXPECT_EQ(facts_.commandLine, "two");
  EXPECT_NE(facts_.fingerprint, fingerprint_);
}

TEST_P(RestingProcessTest, StayWhenTheyRunAfterTheLook) {
  const auto identity = facts_.identity;
  reader_->pids();
  ASSERT_TRUE(reader_->lookAt(13, facts_));
  cpuTime_ = 101;
  ASSERT_TRUE(reader_->confirm(13, facts_));
  EXPECT_EQ(facts_.identity, identity);
}

TEST_P(RestingProcessTest, AreAskedForTheirMemoryAsSwapComesAndGoes) {
  setSwap(9, 0);
  look();
  EXPECT_EQ(footprint_, 1000 * 1024U) << "from status, which counts in kB";
  setSwap(0, 0);
  look();
  EXPECT_EQ(footprint_, 1000 * page_);
}

TEST_P(RestingProcessTest, AreAskedForTheMemoryThatFilesMayTakeBack) {
  const auto shared = [this](std::uint64_t megabytes) {
    const std::string pages = std::to_string((megabytes << 20) / page_);
    folder_.write("13/statm", "900000 900000 " + pages + " 1 0 1 0\n");
    folder_.write("13/status", "RssFile: " + std::to_string(megabytes << 10) + " kB\n");
    look();
    return reader_->sharedMemory(13);
  };
  cpuTime_ = 101;  // it maps a file
  ASSERT_TRUE(shared(4000));
  look();
  const auto less = shared(2000);
  ASSERT_TRUE(less);
  EXPECT_EQ(less->fileBytes, 2000ULL << 20);
}

/// Of a file that is opened anew nothing but the start tells whose it is, and that is counted in
/// ticks.
TEST_P(RestingProcessTest, HaveTheIdentityOfWhoeverHasTheFile) {
  static std::uint64_t inode = 0;
  inode = 1;
  const auto source = [](std::int32_t) { return std::optional(inode); };
  reader_ = readerThatKeeps(GetParam(), proc_, cpuTime, source);
  fingerprint_.reset();
  look();
  EXPECT_EQ(facts_.identity, 1);
  reader_->pids();
  ASSERT_TRUE(reader_->lookAt(13, facts_));
  ++inode;
  ++cpuTime_;
  ASSERT_TRUE(reader_->confirm(13, facts_));
  const bool isKept = GetParam().mostOpenFiles == kKeepings[0].mostOpenFiles;
  EXPECT_EQ(facts_.identity, isKept ? 1 : 2);
}

INSTANTIATE_TEST_SUITE_P(Table, RestingProcessTest, testing::ValuesIn(kKeepings), rowName<Keeping>);

/// A process that rests, whose pid is given to another while the reader takes it to rest still.
class TakenPidTest : public testing::TestWithParam<Keeping> {
 protected:
  static constexpr int kPid = 13;

  TakenPidTest() {
    folder_.write("meminfo", "SwapTotal: 0 kB\nSwapFree: 0 kB\n");
    cpuTime_ = 100;
    give(first_);
    look();
    startTime_ = facts_.startTime;
    identity_ = facts_.identity;
    reader_->pids();
    EXPECT_TRUE(reader_->lookAt(kPid, facts_));
  }

  void give(const ChildProcess& process) {
    std::filesystem::remove(folder_ / std::to_string(kPid));
    folder_.link(std::to_string(kPid), "/proc/" + std::to_string(process.pid()));
  }

  /// Each process has computed for another time.
  void passOn() {
    first_.end();
    give(second_);
    ++cpuTime_;
  }

  void look() {
    reader_->pids();
    ASSERT_TRUE(reader_->read(kPid, facts_));
    ASSERT_TRUE(reader_->confirm(kPid, facts_));
  }

  void expectAnother() {
    look();
    EXPECT_NE(facts_.startTime, startTime_);
    EXPECT_NE(facts_.identity, identity_);
  }

  static std::optional<std::uint64_t> cpuTime(std::int32_t) { return cpuTime_; }
  static inline std::uint64_t cpuTime_ = 0;

  ChildProcess first_{playProcess({}, {"sleeper"})};
  ChildProcess second_{playProcess({}, {"sleeper"})};  // a tick younger
  TempFolder folder_;
  platform::ProcFs proc_{folder_.path().c_str()};
  std::unique_ptr<platform::ProcessReader> reader_ = readerThatKeeps(GetParam(), proc_, cpuTime);
  ProcessFacts facts_;
  std::optional<std::uint64_t> startTime_;
  std::optional<std::uint64_t> identity_;
};

TEST_P(TakenPidTest, IsAnothersWhenArgumentsAreWanted) {
  passOn();
  EXPECT_FALSE(reader_->readCommandLine(facts_)) << "what was looked at is gone";
  expectAnother();
}

TEST_P(TakenPidTest, IsAnothersWhenItIsConfirmed) {
  passOn();
  EXPECT_FALSE(reader_->confirm(kPid, facts_)) << "what was looked at is gone";
  expectAnother();
}

TEST_P(TakenPidTest, IsAnothersBeforeTheNextScan) {
  reader_->footprint(kPid);
  passOn();
  expectAnother();
}

INSTANTIATE_TEST_SUITE_P(Table, TakenPidTest, testing::ValuesIn(kKeepings), rowName<Keeping>);

TEST(ProcessReaderWithoutProc, FindsNothing) {
  const platform::ProcFs proc("/nonexistent");
  platform::ProcessReader reader(proc);
  ProcessFacts facts;
  EXPECT_THAT(reader.pids(), IsEmpty());
  EXPECT_FALSE(reader.read(1, facts));
  EXPECT_FALSE(reader.footprint(1));
}

}  // namespace
