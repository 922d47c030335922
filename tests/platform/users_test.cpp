#include "platform/users.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/mount.h>
#include <unistd.h>

#include "tools/forked.h"
#include "tools/temp_folder.h"

namespace {

TEST(Users, OwnUidIsTheRealUser) {
  EXPECT_EQ(platform::ownUid(), getuid());
  if (geteuid() != 0) return;  // who is not root can't have two
  EXPECT_EQ(resultOfForked(
                [] { return setresuid(0, kStranger, 0) == 0 && platform::ownUid() == 0 ? 0 : 1; }),
            0);
}

TEST(Users, LoginNameIsTheAccounts) {
  EXPECT_EQ(platform::loginName(0), "root");
}

TEST(Users, AnUnknownUserHasNone) {
  EXPECT_EQ(platform::loginName(kStranger), std::nullopt);
}

TEST(Users, AnAccountMayBeLongAndAnOddOneHasNoName) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can put accounts of its own in place";
  const TempFolder folder;
  folder.write("passwd", "ada:x:54321:54321:" + std::string(100000, 'a') + ":/:/bin/sh\n" +
                             "caf\xe9:x:54322:54322::/:/bin/sh\n");
  const int result = resultOfForked([&] {
    if (!makeMountsPrivate() ||
        mount((folder / "passwd").c_str(), "/etc/passwd", "", MS_BIND, "") != 0) {
      return 99;
    }
    if (platform::loginName(54321) != "ada") return 1;
    return platform::loginName(54322).has_value() ? 2 : 0;
  });
  if (result == 99) GTEST_SKIP() << "nothing can be mounted here";
  EXPECT_EQ(result, 0);
}

}  // namespace
