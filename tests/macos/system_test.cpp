// What the edition's smaller platform headers answer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "macos/mac_test.h"
#include "platform/applications.h"
#include "platform/users.h"
#include "platform/words.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class System : public MacTest {};

TEST_F(System, WordsAreTheMacs) {
  EXPECT_EQ(platform::words().system, "macOS");
  EXPECT_EQ(platform::words().systemMonitor, "Activity Monitor");
}

TEST_F(System, UsersAreTheKernels) {
  EXPECT_EQ(platform::ownUid(), darwin::kUser);
  EXPECT_EQ(platform::loginName(502), "grace");
  EXPECT_FALSE(platform::loginName(999));
}

TEST_F(System, ActivityMonitorIsOpenedByItsFileUrl) {
  platform::openSystemMonitor();
  EXPECT_THAT(appkit::record().openedUrls,
              ElementsAre("file:///System/Applications/Utilities/Activity%20Monitor.app"));
}

TEST_F(System, DockerIsOpenedWhereItIsInstalled) {
  platform::openDockerDesktop();
  EXPECT_THAT(appkit::record().openedUrls, IsEmpty());
  Stage::write(std::string(Stage::dockerPath()) + "/Contents/Info.plist", "");
  platform::openDockerDesktop();
  ASSERT_EQ(appkit::record().openedUrls.size(), 1);
  EXPECT_THAT(appkit::record().openedUrls[0], testing::HasSubstr("/Docker.app"));
}

}  // namespace
