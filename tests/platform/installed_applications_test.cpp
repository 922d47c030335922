#include "platform/linux/installed_applications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

constexpr const char* kApplication = "[Desktop Entry]\nType=Application\n";
constexpr const char* kHidden = "[Desktop Entry]\nType=Application\nHidden=true\n";

class InstalledApplications : public testing::Test {
 protected:
  Names ids() const {
    Names ids;
    for (const auto& application :
         platform::installedApplications({user_.path(), machine_.path()})) {
      ids.push_back(application.id);
    }
    return ids;
  }

  TempFolder user_;
  TempFolder machine_;
};

TEST_F(InstalledApplications, ComeFolderAfterFolderByName) {
  user_.write("z.desktop", kApplication);
  machine_.write("b.desktop", kApplication);
  machine_.write("a.desktop", kApplication);
  EXPECT_THAT(ids(), ElementsAre("z.desktop", "a.desktop", "b.desktop"));
}

TEST_F(InstalledApplications, InSubfoldersHaveTheirNamesInTheirId) {
  machine_.write("kde/sub/a.desktop", kApplication);
  EXPECT_THAT(ids(), ElementsAre("kde-sub-a.desktop"));
}

TEST_F(InstalledApplications, TheUsersReplacesTheMachines) {
  user_.write("a.desktop", std::string(kApplication) + "Name=mine\n");
  machine_.write("a.desktop", std::string(kApplication) + "Name=theirs\n");
  const auto found = platform::installedApplications({user_.path(), machine_.path()});
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].entry.name, "mine");
  EXPECT_EQ(found[0].path, user_ / "a.desktop");
}

TEST_F(InstalledApplications, AHiddenOneHidesThoseBehindIt) {
  user_.write("a.desktop", kHidden);
  machine_.write("a.desktop", kApplication);
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(InstalledApplications, OtherFilesAreNone) {
  machine_.write("a.desktop.bak", kApplication);
  machine_.write("link.desktop", "[Desktop Entry]\nType=Link\n");
  std::filesystem::create_directory(machine_ / "folder.desktop");
  ASSERT_EQ(mkfifo((machine_ / "pipe.desktop").c_str(), 0600), 0);
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(InstalledApplications, LinksToNowhereAreHarmless) {
  machine_.link("b.desktop", "/nonexistent");
  machine_.link("c.desktop", "c.desktop");
  machine_.link("d", "/nonexistent");
  machine_.write("z.desktop", kApplication);
  EXPECT_THAT(ids(), ElementsAre("z.desktop"));
}

TEST_F(InstalledApplications, NoFolderIsEnteredTwice) {
  for (const char* link : {"a", "b", "c", "d", "e"}) machine_.link(link, ".");
  machine_.link("sub/up", "..");
  user_.link("machine", machine_.path().string());
  user_.link("own", user_.path().string());
  machine_.write("z.desktop", kApplication);
  machine_.write("sub/y.desktop", kApplication);
  EXPECT_THAT(ids(), ElementsAre("machine-sub-y.desktop", "machine-z.desktop"));
}

TEST_F(InstalledApplications, TheShortestWayNamesAFolder) {
  machine_.write("zz/deep/a.desktop", kApplication);
  machine_.link("m/n/deep", "../../zz/deep");
  machine_.link("k/deep", "../zz/deep");
  EXPECT_THAT(ids(), ElementsAre("k-deep-a.desktop"));
}

TEST_F(InstalledApplications, AreLookedForAtMostEightFoldersDeep) {
  machine_.write("1/2/3/4/5/6/7/8/a.desktop", kApplication);
  machine_.write("1/2/3/4/5/6/7/8/9/b.desktop", kApplication);
  EXPECT_THAT(ids(), ElementsAre("1-2-3-4-5-6-7-8-a.desktop"));
}

TEST_F(InstalledApplications, AreNotLookedForAmongMoreThanTwentyThousandEntries) {
  constexpr std::size_t kMost = 20'000;
  for (std::size_t i = 0; i < kMost + 500; ++i) {
    user_.link(std::to_string(i) + ".desktop", "nowhere");
  }
  machine_.write("z.desktop", kApplication);
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(InstalledApplications, AreReadUpToABound) {
  const std::string long1(256 << 10, '#');
  user_.write("a.desktop", long1 + "\n" + kApplication);
  user_.write("b.desktop", kApplication + long1);
  EXPECT_THAT(ids(), ElementsAre("b.desktop"));
  for (int i = 0; i < 128; ++i) machine_.write(std::to_string(i) + ".desktop", long1);
  machine_.write("z.desktop", kApplication);
  EXPECT_THAT(ids(), ElementsAre("b.desktop")) << "it stands behind 32 MiB";
}

TEST_F(InstalledApplications, FoldersThatAreNotThereHoldNone) {
  EXPECT_THAT(platform::installedApplications({user_ / "nonexistent", ""}), IsEmpty());
}

TEST(ApplicationFolders, AreTheUsersAndTheMachines) {
  const ScopedVariable home("HOME", "/home/ada");
  const ScopedVariable own("XDG_DATA_HOME", nullptr);
  {
    const ScopedVariable shared("XDG_DATA_DIRS", nullptr);
    EXPECT_THAT(platform::applicationFolders(),
                ElementsAre("/home/ada/.local/share/applications", "/usr/local/share/applications",
                            "/usr/share/applications"));
  }
  const ScopedVariable shared("XDG_DATA_DIRS", "/a::relative:/b:");
  EXPECT_THAT(platform::applicationFolders(), ElementsAre("/home/ada/.local/share/applications",
                                                          "/a/applications", "/b/applications"));
}

TEST(ApplicationFolders, OfTheUserMayBeElsewhere) {
  const ScopedVariable own("XDG_DATA_HOME", "/data");
  const ScopedVariable shared("XDG_DATA_DIRS", "/a");
  EXPECT_THAT(platform::applicationFolders(), ElementsAre("/data/applications", "/a/applications"));
}

}  // namespace
