#include "platform/model_manifests.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <thread>

#include "platform/users.h"
#include "tools/hanging_folder.h"
#include "tools/temp_folder.h"

namespace {

using testing::Each;
using testing::Field;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAre;

using platform::readModelManifests;

/// Asks again until there is an answer.
std::vector<platform::ModelManifest> manifestsIn(const std::string& folder, std::uint32_t owner) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (std::chrono::steady_clock::now() < end) {
    if (auto manifests = readModelManifests(folder, owner)) return *manifests;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  ADD_FAILURE() << folder << " does not answer";
  return {};
}

std::vector<std::string> pathsIn(const TempFolder& folder, std::uint32_t owner) {
  std::vector<std::string> paths;
  for (const auto& manifest : manifestsIn(folder.path().string(), owner)) {
    paths.push_back(manifest.path);
  }
  return paths;
}

TEST(ModelManifests, AreReadBelowTheirFolder) {
  const TempFolder folder;
  folder.write("manifests/registry.ollama.ai/library/llama3.1/8b", "{}");
  folder.write("manifests/hf.co/someone/a-GGUF/Q4_K_M", "{\"layers\":[]}");
  folder.write("blobs/sha256-1", "weights");
  EXPECT_THAT(pathsIn(folder, platform::ownUid()),
              UnorderedElementsAre("registry.ollama.ai/library/llama3.1/8b",
                                   "hf.co/someone/a-GGUF/Q4_K_M"));
  EXPECT_THAT(manifestsIn(folder.path().string(), platform::ownUid()),
              Each(Field(&platform::ModelManifest::text, StartsWith("{"))));
}

TEST(ModelManifests, AreSmallRegularFilesOfTheOwnerOrRoot) {
  const TempFolder folder;
  folder.write("manifests/r/n/m/most", std::string(platform::kLongestModelManifest, 'x'));
  folder.write("manifests/r/n/m/long", std::string(platform::kLongestModelManifest + 1, 'x'));
  folder.write("manifests/r/n/m/no-text", "\xFF");
  folder.write("manifests/r/n/m/.hidden", "x");
  folder.write("manifests/r/n/m/t/deep", "x");
  folder.write("secret", "x");
  folder.link("manifests/r/n/m/link", "../../../../secret");
  folder.link("manifests/r/n/loop", "..");
  ASSERT_EQ(mkfifo((folder / "manifests/r/n/m/pipe").c_str(), 0600), 0);
  EXPECT_THAT(pathsIn(folder, platform::ownUid()), UnorderedElementsAre("r/n/m/most"));
  // Root's are anybody's, others' are not.
  const bool isRoot = platform::ownUid() == 0;
  EXPECT_EQ(pathsIn(folder, platform::ownUid() + 1).size(), isRoot ? 1U : 0U);
}

TEST(ModelManifests, OfAnothersFolderAreNotTaken) {
  if (platform::ownUid() != 0) GTEST_SKIP() << "only root gives files away";
  const TempFolder folder;
  folder.write("manifests/r/n/m/t", "x");
  ASSERT_EQ(chown((folder / "manifests/r/n/m/t").c_str(), 4711, 4711), 0);
  EXPECT_THAT(pathsIn(folder, 4711), UnorderedElementsAre("r/n/m/t"));
  EXPECT_THAT(pathsIn(folder, 4712), IsEmpty());
}

TEST(ModelManifests, AreNoMoreThanAFew) {
  const TempFolder folder;
  for (std::size_t i = 0; i < platform::kMostModelManifests + 9; ++i) {
    folder.write("manifests/r/n/m" + std::to_string(i) + "/t", "x");
  }
  EXPECT_EQ(pathsIn(folder, platform::ownUid()).size(), platform::kMostModelManifests);
}

TEST(ModelManifests, OfNoFolderAreNone) {
  EXPECT_THAT(manifestsIn("/no/such/folder", 0), IsEmpty());
  EXPECT_THAT(manifestsIn("relative", 0), IsEmpty());
  EXPECT_THAT(manifestsIn("", 0), IsEmpty());
}

TEST(ModelManifests, OfAFolderThatHangsAreNotWaitedFor) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "mount");
  folder.write("models/manifests/r/n/m/t", "x");
  HangingFolder hanging(folder / "mount");
  if (!hanging.hangs()) GTEST_SKIP() << "only root mounts a file system, where containers may";
  // Should the program wait after all, it fails instead of waiting for ever.
  std::promise<void> isOver;
  std::thread watch([&, over = isOver.get_future()] {
    if (over.wait_for(std::chrono::minutes(1)) == std::future_status::timeout) hanging.answers();
  });

  const std::uint32_t owner = platform::ownUid();
  for (const char* const path : {"mount/models", "mount/models", "mount/a", "mount/b"}) {
    EXPECT_FALSE(readModelManifests((folder / path).string(), owner)) << path;
  }
  EXPECT_EQ(manifestsIn((folder / "models").string(), owner).size(), 1U) << "beside them";
  EXPECT_FALSE(readModelManifests((folder / "mount/c").string(), owner));
  EXPECT_FALSE(readModelManifests((folder / "models").string(), owner)) << "too many hang";

  isOver.set_value();
  watch.join();
  hanging.answers();
  EXPECT_THAT(manifestsIn((folder / "mount/models").string(), owner), IsEmpty());
  EXPECT_EQ(manifestsIn((folder / "models").string(), owner).size(), 1U);
}

}  // namespace
