#include "platform/linux/unit_folders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

namespace {

using platform::LaunchAgentFile;
using testing::ElementsAre;
using testing::IsEmpty;

class LaunchAgentFilesIn : public testing::Test {
 protected:
  std::vector<LaunchAgentFile> files() const {
    return platform::launchAgentFilesIn(folder_.path());
  }

  std::vector<std::string> labels() const {
    std::vector<std::string> labels;
    for (const auto& file : files()) labels.push_back(file.label);
    return labels;
  }

  TempFolder folder_;
};

TEST_F(LaunchAgentFilesIn, TellWhatTheFileSays) {
  folder_.write("ollama.service", "[Service]\nExecStart=-/usr/bin/ollama serve\nRestart=always\n");
  const auto found = files();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].label, "ollama");
  EXPECT_EQ(found[0].path, folder_ / "ollama.service");
  EXPECT_THAT(found[0].programArguments, ElementsAre("/usr/bin/ollama", "serve"));
  EXPECT_TRUE(found[0].keepAlive);
}

TEST_F(LaunchAgentFilesIn, ComeByName) {
  for (const char* name : {"b.service", "a.service", "B.service", "c.d.service"}) {
    folder_.write(name, "");
  }
  EXPECT_THAT(labels(), ElementsAre("B", "a", "b", "c.d"));
}

TEST_F(LaunchAgentFilesIn, AreServicesOnly) {
  for (const char* name : {"a.socket", "a.service.bak", "service", ".service", "a.SERVICE",
                           "template@.service", "instance@one.service", "caf\xe9.service"}) {
    folder_.write(name, "");
  }
  folder_.write("a.service.d/override.conf", "[Service]\nExecStart=/bin/a\n");
  EXPECT_THAT(labels(), ElementsAre("instance@one"));
}

TEST_F(LaunchAgentFilesIn, FollowLinksToFiles) {
  folder_.write("elsewhere/real.service", "[Service]\nExecStart=/bin/a\n");
  folder_.link("alias.service", (folder_ / "elsewhere/real.service").string());
  const auto found = files();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].label, "alias");
  EXPECT_THAT(found[0].programArguments, ElementsAre("/bin/a"));
}

TEST_F(LaunchAgentFilesIn, MaskedOnesHaveNoCommand) {
  folder_.link("masked.service", "/dev/null");
  folder_.write("empty.service", "");
  const auto found = files();
  ASSERT_EQ(found.size(), 2U);
  for (const auto& file : found) {
    EXPECT_THAT(file.programArguments, IsEmpty());
    EXPECT_FALSE(file.keepAlive);
  }
}

TEST_F(LaunchAgentFilesIn, AreRegularFiles) {
  std::filesystem::create_directory(folder_ / "folder.service");
  ASSERT_EQ(mkfifo((folder_ / "pipe.service").c_str(), 0600), 0);
  folder_.link("broken.service", "/nonexistent/x.service");
  folder_.link("loop.service", "loop.service");
  folder_.link("device.service", "/dev/zero");
  folder_.link("terminal.service", "/dev/tty");
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(LaunchAgentFilesIn, MayBeHuge) {
  std::string bytes(5 << 20, 'x');
  const std::string start = "[Service]\nExecStart=/bin/a\n#";
  bytes.replace(0, start.size(), start);
  folder_.write("huge.service", bytes);
  const auto found = files();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_THAT(found[0].programArguments, ElementsAre("/bin/a"));
}

TEST_F(LaunchAgentFilesIn, AreReadUpToABound) {
  constexpr std::size_t kLongest = 64 << 10;
  const std::string first = "[Service]\nExecStart=/bin/a\n";
  const std::string comment = "#" + std::string(kLongest - first.size() - 2, 'x') + "\n";
  folder_.write("a.service", first + comment + "Restart=always\n");
  auto found = files();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_THAT(found[0].programArguments, ElementsAre("/bin/a"));
  EXPECT_FALSE(found[0].keepAlive) << "it stands behind the bound";

  for (int i = 0; i < 128; ++i) folder_.write("b" + std::to_string(i) + ".service", comment);
  folder_.write("c.service", first);
  found = files();
  EXPECT_EQ(found.front().label, "a");
  EXPECT_NE(found.back().label, "c") << "it stands behind 8 MiB";
}

TEST_F(LaunchAgentFilesIn, OfTenThousandAreTheFirstThousandByName) {
  constexpr int kMany = 10'000;
  for (int i = kMany; i > 0; --i) {
    folder_.link("unit-" + std::to_string(kMany + i) + ".service", "/dev/null");
  }
  const auto found = files();
  ASSERT_EQ(found.size(), 1'000U);
  EXPECT_EQ(found.front().label, "unit-10001");
  EXPECT_EQ(found.back().label, "unit-11000");
}

TEST_F(LaunchAgentFilesIn, OfMoreThanTenThousandEntriesAreAmongTheFoldersFirst) {
  constexpr int kEntries = 10'500;
  constexpr int kLookedAt = 10'000;
  constexpr int kStep = 7'919;  // so that neither order is the other
  for (int i = 0; i < kEntries; ++i) {
    const int number = kEntries + i * kStep % kEntries;
    folder_.link("unit-" + std::to_string(number) + ".service", "/dev/null");
  }
  std::vector<std::string> expected;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
    if (expected.size() < kLookedAt) expected.push_back(entry.path().stem().string());
  }
  std::sort(expected.begin(), expected.end());
  expected.resize(1'000);
  ASSERT_NE(expected.back(), "unit-11499") << "the bound would make no difference";
  EXPECT_EQ(labels(), expected);
}

TEST_F(LaunchAgentFilesIn, AFolderThatIsNotThereAreNone) {
  EXPECT_THAT(platform::launchAgentFilesIn(folder_ / "nonexistent"), IsEmpty());
  EXPECT_THAT(platform::launchAgentFilesIn(""), IsEmpty());
  folder_.write("file", "");
  EXPECT_THAT(platform::launchAgentFilesIn(folder_ / "file"), IsEmpty());
}

TEST(UserUnitFolder, IsInTheConfigurationFolder) {
  const ScopedVariable home("HOME", "/home/ada");
  const ScopedVariable config("XDG_CONFIG_HOME", "/elsewhere");
  EXPECT_EQ(platform::userUnitFolder(), "/elsewhere/systemd/user");
}

TEST(UserUnitFolder, IsElseInTheHomeFolder) {
  const ScopedVariable home("HOME", "/home/ada");
  for (const char* unusable : {"", "relative/path"}) {
    const ScopedVariable config("XDG_CONFIG_HOME", unusable);
    EXPECT_EQ(platform::userUnitFolder(), "/home/ada/.config/systemd/user") << unusable;
  }
  const ScopedVariable config("XDG_CONFIG_HOME", nullptr);
  EXPECT_EQ(platform::userUnitFolder(), "/home/ada/.config/systemd/user");
}

std::time_t now() {
  return std::time(nullptr);
}
/// When a change that comes now can't have the time of an earlier one any more.
std::time_t later() {
  return std::time(nullptr) + 60;
}

/// Waits until what is written has another time than what was written before.
void waitForATick() {
  const TempFolder folder;
  const auto timeOfNew = [&folder](const char* name) {
    folder.write(name, "");
    struct stat status = {};
    EXPECT_EQ(stat((folder / name).c_str(), &status), 0);
    return std::pair(status.st_ctim.tv_sec, status.st_ctim.tv_nsec);
  };
  const auto before = timeOfNew("before");
  while (timeOfNew("after") == before) {
  }
}

std::vector<std::string> commandsOf(const platform::LaunchAgentFolder& folder) {
  std::vector<std::string> commands;
  for (const LaunchAgentFile& file : folder.files()) {
    commands.push_back(file.label + ":" +
                       (file.programArguments.empty() ? "" : file.programArguments.front()));
  }
  return commands;
}

TEST(LaunchAgentFolder, IsReadAgainOnlyWhenSomethingIsNew) {
  const TempFolder files;
  files.write("a.service", "[Service]\nExecStart=/bin/a\n");
  platform::LaunchAgentFolder folder(files.path(), later);
  EXPECT_TRUE(folder.update());
  EXPECT_THAT(commandsOf(folder), ElementsAre("a:/bin/a"));
  const LaunchAgentFile* const kept = folder.files().data();
  EXPECT_FALSE(folder.update());
  EXPECT_EQ(folder.files().data(), kept);

  waitForATick();
  files.write("b.service", "[Service]\nExecStart=/bin/b\n");
  EXPECT_TRUE(folder.update()) << "one that is new";
  EXPECT_THAT(commandsOf(folder), ElementsAre("a:/bin/a", "b:/bin/b"));
  EXPECT_FALSE(folder.update());

  waitForATick();
  // The same size; the folder does not change.
  files.write("a.service", "[Service]\nExecStart=/bin/x\n");
  EXPECT_TRUE(folder.update()) << "one that says something else";
  EXPECT_THAT(commandsOf(folder), ElementsAre("a:/bin/x", "b:/bin/b"));
  EXPECT_FALSE(folder.update());

  waitForATick();
  std::filesystem::remove(files / "a.service");
  EXPECT_TRUE(folder.update()) << "one that is gone";
  EXPECT_THAT(commandsOf(folder), ElementsAre("b:/bin/b"));
  EXPECT_FALSE(folder.update());

  waitForATick();
  std::filesystem::remove_all(files.path());
  EXPECT_TRUE(folder.update()) << "the folder is gone";
  EXPECT_THAT(commandsOf(folder), IsEmpty());
  EXPECT_FALSE(folder.update());
  waitForATick();
  std::filesystem::create_directory(files.path());
  files.write("c.service", "");
  EXPECT_TRUE(folder.update()) << "and there again";
  EXPECT_THAT(commandsOf(folder), ElementsAre("c:"));
}

TEST(LaunchAgentFolder, FollowsWhatALinkLeadsTo) {
  const TempFolder files;
  files.write("elsewhere/a", "[Service]\nExecStart=/bin/a\n");
  files.link("units/a.service", (files / "elsewhere/a").string());
  platform::LaunchAgentFolder folder(files / "units", later);
  folder.update();
  ASSERT_FALSE(folder.update());
  waitForATick();
  files.write("elsewhere/a", "[Service]\nExecStart=/bin/x\n");
  EXPECT_TRUE(folder.update());
  EXPECT_THAT(commandsOf(folder), ElementsAre("a:/bin/x"));
}

TEST(LaunchAgentFolder, IsReadOnceMoreWhereAnotherChangeMayHaveTheSameTime) {
  const TempFolder files;
  files.write("a.service", "[Service]\nExecStart=/bin/a\n");
  platform::LaunchAgentFolder folder(files.path(), now);
  EXPECT_TRUE(folder.update());
  EXPECT_TRUE(folder.update());
}

TEST(UserUnitFiles, OfOneNameInBothFoldersAreTwoTheUsersFirst) {
  const TempFolder folder;
  folder.write("config/systemd/user/a.service", "[Service]\nExecStart=/bin/users\n");
  folder.write("etc/a.service", "[Service]\nExecStart=/bin/machines\n");
  folder.write("etc/b.service", "");
  const ScopedVariable config("XDG_CONFIG_HOME", (folder / "config").c_str());
  platform::UserUnitFiles files(folder / "etc");
  const auto found = files.read();
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0].path, folder / "config/systemd/user/a.service");
  EXPECT_EQ(found[1].path, folder / "etc/a.service");
  EXPECT_EQ(found[2].label, "b");
}

TEST(LaunchAgentFiles, AreTheUsersAndThenTheMachines) {
  const TempFolder folder;
  folder.write("systemd/user/zz-of-the-user.service", "");
  const ScopedVariable config("XDG_CONFIG_HOME", folder.path().c_str());
  const auto files = platform::launchAgentFiles();
  ASSERT_FALSE(files.empty());
  EXPECT_EQ(files.front().label, "zz-of-the-user");
  for (std::size_t i = 1; i < files.size(); ++i) {
    EXPECT_TRUE(files[i].path.starts_with("/etc/systemd/user/")) << files[i].path;
  }
}

}  // namespace
