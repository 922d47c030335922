#include "platform/model_manifests.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/users.h"
#include "tools/temp_folder.h"

namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::vector<std::string> pathsIn(const TempFolder& folder, std::uint32_t owner) {
  std::vector<std::string> paths;
  for (const auto& manifest : platform::readModelManifests(folder.path().string(), owner)) {
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
  EXPECT_EQ(
      platform::readModelManifests(folder.path().string(), platform::ownUid())[0].text.front(),
      '{');
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
  EXPECT_THAT(platform::readModelManifests("/no/such/folder", 0), IsEmpty());
  EXPECT_THAT(platform::readModelManifests("relative", 0), IsEmpty());
  EXPECT_THAT(platform::readModelManifests("", 0), IsEmpty());
}

}  // namespace
