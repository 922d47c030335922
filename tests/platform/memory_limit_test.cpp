#include "platform/linux/memory_limit.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <memory>

#include "fakes/row_name.h"
#include "platform/linux/memory.h"
#include "tools/forked.h"
#include "tools/temp_folder.h"

namespace {

using platform::MemoryLimitReader;

constexpr std::uint64_t kMiB = 1048576;
constexpr double kInstalled = 16384.0 * kMiB;

/// A machine's /proc and /sys/fs/cgroup, as files.
class World {
 public:
  /// Of version 2, in whose namespace the container's cgroup is the root.
  explicit World(const std::string& mounts = "1 2 0:3 / /cg rw - cgroup2 cgroup2 rw\n") {
    folder_.write("proc/self/mountinfo", mounts);
    own("0::/\n");
    process(1, "0::/\n");
  }

  void own(const std::string& cgroup) const { folder_.write("proc/self/cgroup", cgroup); }

  void process(int pid, const std::string& cgroup, const char* state = "S",
               const char* flags = "0") const {
    const std::string at = "proc/" + std::to_string(pid) + "/";
    folder_.write(at + "cgroup", cgroup);
    folder_.write(at + "stat", std::to_string(pid) + " (a) " + state + " 0 1 1 0 -1 " + flags +
                                   " 0 0 0 0 0 0 0 0 20 0 1 0 5 0 0\n");
  }

  void file(const std::string& name, const std::string& text) const {
    folder_.write("cg/" + name, text);
  }
  void file(const std::string& name, std::uint64_t number) const {
    file(name, std::to_string(number) + "\n");
  }

  /// A cgroup of version 2 with a limit.
  void group(const std::string& name, std::uint64_t limitMiB) const {
    file(name + "memory.max", limitMiB * kMiB);
    file(name + "memory.current", 300 * kMiB);
    file(name + "memory.stat", "anon 1\ninactive_file 20971520\nactive_file 31457280\n");
  }

  void remove(const std::string& name) const { std::filesystem::remove_all(folder_ / name); }

  /// What a reader says that has just begun.
  std::optional<platform::MemoryLimit> read() const { return reader()->read(kInstalled); }

  /// The limit alone, in MiB; 0 for none.
  double limit() const {
    const auto found = read();
    return found ? found->totalBytes / kMiB : 0;
  }

  std::unique_ptr<MemoryLimitReader> reader() const {
    return std::make_unique<MemoryLimitReader>(proc_, folder_.path().string());
  }

 private:
  TempFolder folder_;
  platform::ProcFs proc_{
      (std::filesystem::create_directories(folder_ / "proc"), (folder_ / "proc").c_str())};
};

TEST(MemoryLimit, IsTheContainersAndUsageLeavesOutWhatIsReclaimable) {
  const World world;
  world.group("", 1024);
  const auto limit = world.read();
  ASSERT_TRUE(limit);
  EXPECT_EQ(limit->totalBytes, 1024.0 * kMiB);
  EXPECT_EQ(limit->inUse.usedBytes, 250.0 * kMiB);
  EXPECT_EQ(limit->inUse.freeBytes, 724.0 * kMiB);
}

TEST(MemoryLimit, IsReadInVersionOneToo) {
  const World world("1 2 0:3 /docker/0af /cg rw - cgroup cgroup rw,memory\n");
  world.own("4:memory:/docker/0af\n0::/\n");
  world.process(1, "4:memory:/docker/0af\n0::/\n");
  world.file("memory.limit_in_bytes", 1024 * kMiB);
  world.file("memory.usage_in_bytes", 300 * kMiB);
  world.file("memory.stat",
             "inactive_file 0\ntotal_inactive_file 20971520\ntotal_active_file 31457280\n"
             "swap 1\ntotal_swap 5\n");
  const auto limit = world.read();
  ASSERT_TRUE(limit);
  EXPECT_EQ(limit->swappedBytes, 5);
  EXPECT_EQ(limit->totalBytes, 1024.0 * kMiB);
  EXPECT_EQ(limit->inUse.usedBytes, 250.0 * kMiB);
}

TEST(MemoryLimit, TellsSwapAndStallsWhereTheKernelDoes) {
  const World world;
  world.group("", 1024);
  EXPECT_FALSE(world.read().value().swappedBytes);
  EXPECT_FALSE(world.read().value().stalls);
  world.file("memory.swap.current", 7 * kMiB);
  world.file("memory.pressure", "some avg10=4.00 \nfull avg10=2.00 \n");
  EXPECT_EQ(world.read().value().swappedBytes, 7.0 * kMiB);
  EXPECT_EQ(world.read().value().stalls, (platform::MemoryStalls{4, 2}));
}

TEST(MemoryLimit, OfVersionOneHoldsWhatIsBelowOnlyWhereItIsToldTo) {
  const World world("1 2 0:3 / /cg rw - cgroup cgroup rw,memory\n");
  world.own("4:memory:/pod/a\n");
  world.process(1, "4:memory:/pod/a\n");
  world.file("pod/memory.limit_in_bytes", 1024 * kMiB);
  world.file("pod/memory.usage_in_bytes", 1 * kMiB);
  world.file("pod/memory.use_hierarchy", 1);
  EXPECT_EQ(world.limit(), 1024);
  world.file("pod/memory.use_hierarchy", 0);
  EXPECT_EQ(world.limit(), 0);
}

TEST(MemoryLimit, TheSmallestOnTheWayUpHolds) {
  const World world;
  world.own("0::/pod/a\n");
  world.process(1, "0::/pod/a\n");
  world.group("pod/a/", 2048);
  EXPECT_EQ(world.limit(), 2048);
  world.group("pod/", 1024);
  EXPECT_EQ(world.limit(), 1024);
  world.group("", 4096);
  EXPECT_EQ(world.limit(), 1024);
  world.file("pod/memory.max", "max\n");
  EXPECT_EQ(world.limit(), 2048);
}

TEST(MemoryLimit, OfThisProgramsOwnUnitAloneIsNone) {
  const World world;
  world.own("0::/user.slice/vorda.service\n");
  world.process(1, "0::/init.scope\n");
  world.process(7, "0::/user.slice/vorda.service\n");
  world.group("user.slice/vorda.service/", 1024);
  EXPECT_EQ(world.limit(), 0);
  world.group("", 2048);
  EXPECT_EQ(world.limit(), 2048) << "one further up holds all";
}

TEST(MemoryLimit, ThatOneProcessIsOutsideOfIsNone) {
  const World world;
  world.group("", 1024);
  world.process(7, "0::/../elsewhere\n");
  EXPECT_EQ(world.limit(), 0);
}

TEST(MemoryLimit, HoldsThoughKernelThreadsAndTheDeadAreOutside) {
  const World world;
  world.own("0::/all\n");
  world.process(1, "0::/all\n");
  world.process(2, "0::/\n", "S", "2097152");
  world.process(7, "0::/\n", "Z");
  world.group("all/", 1024);
  EXPECT_EQ(world.limit(), 1024);
}

struct SizeRow {
  const char* name;
  double limitMiB;
  double expectedMiB;
};

class MemoryLimitSize : public testing::TestWithParam<SizeRow> {};

TEST_P(MemoryLimitSize, Counts) {
  const World world;
  world.group("", static_cast<std::uint64_t>(GetParam().limitMiB));
  EXPECT_EQ(world.limit(), GetParam().expectedMiB);
}

constexpr SizeRow kSizes[] = {
    {"HalfAGigabyte", 512, 512},
    {"LessThanThat", 511, 0},
    {"JustBelowWhatIsInstalled", 16383, 16383},
    {"AsMuchAsIsInstalled", 16384, 0},
    {"WhatTheKernelWritesForNone", 8796093022207.0, 0},
};

INSTANTIATE_TEST_SUITE_P(Table, MemoryLimitSize, testing::ValuesIn(kSizes), rowName<SizeRow>);

TEST(MemoryLimit, OneThatIsTooSmallToBeShownHidesTheLargerOnesAboveIt) {
  const World world;
  world.own("0::/a\n");
  world.process(1, "0::/a\n");
  world.group("a/", 100);
  world.group("", 2048);
  EXPECT_EQ(world.limit(), 0);
}

TEST(MemoryLimit, IsNoneWhereNothingCanBeRead) {
  EXPECT_EQ(World("").limit(), 0);
  EXPECT_EQ(World().limit(), 0);
  const World world;
  world.file("memory.max", 1024 * kMiB);
  EXPECT_EQ(world.limit(), 0) << "no usage";
  world.group("", 1024);
  world.own("");
  EXPECT_EQ(world.limit(), 0);
  world.own("0::/\n");
  world.remove("proc/1");
  EXPECT_EQ(world.limit(), 0) << "nobody can be listed";
}

TEST(MemoryLimit, IsLookedUpEveryHalfMinuteAndWhenItHasGone) {
  const World world;
  const auto reader = world.reader();
  const MemoryLimitReader::Clock::time_point start{};
  EXPECT_FALSE(reader->read(kInstalled, start));
  world.group("", 1024);
  EXPECT_FALSE(reader->read(kInstalled, start + std::chrono::seconds(29)));
  EXPECT_TRUE(reader->read(kInstalled, start + std::chrono::seconds(30)));
  world.file("memory.current", 400 * kMiB);
  EXPECT_EQ(reader->read(kInstalled, start + std::chrono::seconds(31)).value().inUse.usedBytes,
            350.0 * kMiB);
  world.remove("cg/memory.current");
  EXPECT_FALSE(reader->read(kInstalled, start + std::chrono::seconds(32)));
  world.group("", 2048);
  const auto another = reader->read(kInstalled, start + std::chrono::seconds(33));
  ASSERT_TRUE(another);
  EXPECT_EQ(another->totalBytes, 2048.0 * kMiB);
}

/// A cgroup of the test's own on the real machine, with 600 MiB; "" for where none can be made.
class LimitedGroup {
 public:
  static constexpr double kLimit = 600.0 * kMiB;

  LimitedGroup() {
    for (const char* hierarchy : {"/sys/fs/cgroup/memory", "/sys/fs/cgroup"}) {
      folder_ = std::string(hierarchy) + "/vorda-test-" + std::to_string(getpid());
      if (mkdir(folder_.c_str(), 0755) != 0) continue;
      if (write("memory.limit_in_bytes") || write("memory.max")) return;
      rmdir(folder_.c_str());
    }
    folder_.clear();
  }
  ~LimitedGroup() {
    if (!folder_.empty()) rmdir(folder_.c_str());
  }
  LimitedGroup(const LimitedGroup&) = delete;
  LimitedGroup& operator=(const LimitedGroup&) = delete;

  bool exists() const { return !folder_.empty(); }
  bool enter() const { return put("cgroup.procs", "0"); }

 private:
  bool write(const char* name) const {
    struct stat status = {};
    return stat((folder_ + "/" + name).c_str(), &status) == 0 &&
           put(name, std::to_string(static_cast<std::uint64_t>(kLimit)));
  }
  bool put(const char* name, const std::string& text) const {
    std::ofstream file(folder_ + "/" + name);
    return static_cast<bool>(file << text << std::flush);
  }

  std::string folder_;
};

enum Seen { none, theLimit, something, notTried };

int seenLimit() {
  const platform::ProcFs proc("/proc");
  const auto limit = MemoryLimitReader(proc).read(platform::readMemory(proc).totalBytes);
  if (!limit) return none;
  const bool isUsed = limit->inUse.usedBytes >= 0 && limit->inUse.usedBytes < limit->totalBytes;
  return limit->totalBytes == LimitedGroup::kLimit && isUsed ? theLimit : something;
}

/// In a pid namespace with a /proc of its own.
int seenInContainer() {
  if (!makeMountsPrivate() || unshare(CLONE_NEWPID) != 0) return notTried;
  return resultOfForked([] {
    if (mount("proc", "/proc", "proc", 0, nullptr) != 0) return static_cast<int>(notTried);
    return seenLimit();
  });
}

TEST(MemoryLimitOfARealContainer, IsSeenFromInsideAndNotFromBesideIt) {
  const LimitedGroup group;
  if (!group.exists()) GTEST_SKIP() << "no cgroup with a memory limit can be made here";
  const int alone = resultOfForked([&group] { return group.enter() ? seenLimit() : notTried; });
  if (alone == notTried) GTEST_SKIP() << "no cgroup can be entered here";
  EXPECT_EQ(alone, none) << "others are not in this limit";

  const int contained =
      resultOfForked([&group] { return group.enter() ? seenInContainer() : notTried; });
  if (contained == notTried) GTEST_SKIP() << "no pid namespace can be made here";
  EXPECT_EQ(contained, theLimit);
}

}  // namespace
