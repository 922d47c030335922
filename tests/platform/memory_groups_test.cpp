#include "platform/linux/memory_groups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "fakes/row_name.h"

namespace {

using platform::MemoryHierarchy;
using testing::ElementsAre;
using testing::IsEmpty;

struct MountRow {
  const char* name;
  const char* text;
  std::vector<MemoryHierarchy> expected;
};

class MemoryHierarchiesIn : public testing::TestWithParam<MountRow> {};

TEST_P(MemoryHierarchiesIn, AreThoseThatMayAccountMemory) {
  EXPECT_EQ(platform::memoryHierarchiesIn(GetParam().text), GetParam().expected);
}

const MountRow kMounts[] = {
    {"Unified",
     "29 23 0:26 / /sys/fs/cgroup rw,nosuid shared:9 - cgroup2 cgroup2 rw,nsdelegate\n",
     {{2, "/", "/sys/fs/cgroup"}}},
    {"ControllersApart",
     "34 31 0:31 / /sys/fs/cgroup/cpuset rw - cgroup cgroup rw,cpuset\n"
     "35 31 0:32 / /sys/fs/cgroup/memory rw,relatime - cgroup cgroup rw,memory\n"
     "41 31 0:38 / /sys/fs/cgroup/unified rw - cgroup2 cgroup2 rw\n",
     {{1, "/", "/sys/fs/cgroup/memory"}, {2, "/", "/sys/fs/cgroup/unified"}}},
    {"OneOfAContainer",
     "70 60 0:32 /docker/0af /sys/fs/cgroup/memory ro - cgroup cgroup rw,cpu,memory\n",
     {{1, "/docker/0af", "/sys/fs/cgroup/memory"}}},
    {"OptionalFields",
     "1 2 0:3 / /c rw master:1 propagate_from:2 - cgroup2 none rw\n",
     {{2, "/", "/c"}}},
    {"ABlankInThePath", "1 2 0:3 /a\\040b /c\\134d rw - cgroup2 none rw\n", {{2, "/a b", "/c\\d"}}},
    {"AnotherControllerThatBeginsLikeIt", "1 2 0:3 / /c rw - cgroup none rw,memoryless\n", {}},
    {"AnotherFileSystem", "1 2 0:3 / /c rw - tmpfs cgroup2 rw,memory\n", {}},
    {"NoEndOfTheOptionalFields", "1 2 0:3 / /c rw cgroup2 cgroup2 rw\n", {}},
    {"CutShort", "1 2 0:3 - cgroup2 cgroup2 rw", {}},
    {"ARelativePath", "1 2 0:3 a c rw - cgroup2 cgroup2 rw", {}},
    {"Nothing", "", {}},
};

INSTANTIATE_TEST_SUITE_P(Table, MemoryHierarchiesIn, testing::ValuesIn(kMounts), rowName<MountRow>);

TEST(MemoryHierarchies, AreAtMostSixteen) {
  std::string text;
  for (int i = 0; i < 100; ++i) text += "1 2 0:3 / /c rw - cgroup2 cgroup2 rw\n";
  EXPECT_EQ(platform::memoryHierarchiesIn(text).size(), 16U);
}

TEST(MemoryGroup, IsThatOfTheHierarchyOfTheVersion) {
  const char* const hybrid = "9:name=systemd:/a\n4:cpu,memory:/b:c\n0::/d\n";
  EXPECT_EQ(platform::memoryGroupIn(hybrid, 1), "/b:c");
  EXPECT_EQ(platform::memoryGroupIn(hybrid, 2), "/d");
  EXPECT_EQ(platform::memoryGroupIn("0::/d", 1), "");
  EXPECT_EQ(platform::memoryGroupIn("1:name=memory:/d", 1), "");
  EXPECT_EQ(platform::memoryGroupIn("0::d\n0:x:/e\n10::/f\n", 2), "");
  EXPECT_EQ(platform::memoryGroupIn("", 2), "");
}

struct PlaceRow {
  const char* name;
  const char* group;
  const char* above;
  bool expected;
};

class IsAtOrBelow : public testing::TestWithParam<PlaceRow> {};

TEST_P(IsAtOrBelow, Says) {
  EXPECT_EQ(platform::isAtOrBelow(GetParam().group, GetParam().above), GetParam().expected);
}

constexpr PlaceRow kPlaces[] = {
    {"TheSame", "/a/b", "/a/b", true},
    {"AChild", "/a/b/c", "/a/b", true},
    {"TheFolderAbove", "/a", "/a/b", false},
    {"ALongerName", "/a/bc", "/a/b", false},
    {"AnythingBelowTheRoot", "/a", "/", true},
    {"TheRootItself", "/", "/", true},
    {"OutsideOfTheNamespace", "/../other", "/", false},
    {"TheParentOfTheNamespace", "/..", "/", false},
    {"ANameThatBeginsWithDots", "/..a", "/", true},
    {"Nowhere", "", "/", false},
    {"BelowNothing", "/a", "", false},
};

INSTANTIATE_TEST_SUITE_P(Table, IsAtOrBelow, testing::ValuesIn(kPlaces), rowName<PlaceRow>);

TEST(GroupsUpwards, AreAllUpToTheRoot) {
  EXPECT_THAT(platform::groupsUpwards("/a/b", "/"), ElementsAre("/a/b", "/a", "/"));
  EXPECT_THAT(platform::groupsUpwards("/a/b/c", "/a"), ElementsAre("/a/b/c", "/a/b", "/a"));
  EXPECT_THAT(platform::groupsUpwards("/", "/"), ElementsAre("/"));
  EXPECT_THAT(platform::groupsUpwards("/b", "/a"), IsEmpty());
  EXPECT_THAT(platform::groupsUpwards("", "/"), IsEmpty());
}

TEST(GroupsUpwards, AreBounded) {
  std::string deep;
  for (int i = 0; i < 1000; ++i) deep += "/a";
  EXPECT_EQ(platform::groupsUpwards(deep, "/").size(), 64U);
}

TEST(ReclaimableMemory, IsFilesOfAllAgesAndWhatTheKernelKeepsOfThem) {
  const char* const second = "anon 900\ninactive_file 10\nactive_file 200\nslab_reclaimable 3000\n";
  EXPECT_EQ(platform::reclaimableIn(second, 2), 3210U);
  const char* const first =
      "inactive_file 1\nactive_file 1\ntotal_inactive_file 10\ntotal_active_file 200\n";
  EXPECT_EQ(platform::reclaimableIn(first, 1), 210U);
  EXPECT_EQ(platform::reclaimableIn("inactive_file ten\nactive_file 7", 2), 7U);
  EXPECT_EQ(platform::reclaimableIn("", 2), 0U);
}

TEST(ReclaimableMemory, NeverWrapsRound) {
  const auto most = std::numeric_limits<std::uint64_t>::max();
  const std::string text =
      "inactive_file " + std::to_string(most) + "\nactive_file " + std::to_string(most);
  EXPECT_EQ(platform::reclaimableIn(text, 2), most);
}

TEST(MemoryGroups, AnyTextIsReadWithinBounds) {
  const std::string words[] = {"/",   "a",      "\n", " - ",   "cgroup2", "cgroup", " ",
                               "0::", "memory", "..", "\\040", ",",       ":",      "4:memory:"};
  std::mt19937 random(20'261);
  for (int round = 0; round < 3'000; ++round) {
    std::string text;
    for (auto i = random() % 40; i > 0; --i) text += words[random() % std::size(words)];
    EXPECT_LE(platform::memoryHierarchiesIn(text).size(), 16U);
    for (const int version : {1, 2}) {
      const std::string_view group = platform::memoryGroupIn(text, version);
      EXPECT_TRUE(group.empty() || group.front() == '/') << text;
      for (const std::string_view above : platform::groupsUpwards(group, "/")) {
        EXPECT_TRUE(platform::isAtOrBelow(group, above)) << text;
      }
    }
  }
}

}  // namespace
