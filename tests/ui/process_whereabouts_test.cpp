#include "ui/process_whereabouts.h"

#include <gtest/gtest.h>

#include "fakes/scripted_platform.h"
#include "scanner/vorda_process.h"

namespace {

class Whereabouts : public testing::Test {
 protected:
  Whereabouts() {
    resetMachine();
    machine().processes = {{.pid = 7,
                            .arguments = {"/usr/bin/ollama"},
                            .identity = 70,
                            .place = "Unit: ollama.service",
                            .folder = "/srv/a\nb/token=abcdefghijklmnop"}};
  }

  VordaProcess process_{.pid = 7, .ownerName = "ada", .identity = 70};
};

TEST_F(Whereabouts, OfTheUsersOwnAreTheirFolderMadeHarmless) {
  EXPECT_EQ(folderOfOwn(process_), "/srv/a\uFFFDb/token=•••");
  EXPECT_EQ(placeOfOthers(process_), "");
}

TEST_F(Whereabouts, OfOthersAreTheirPlace) {
  process_.isProtected = true;
  EXPECT_EQ(placeOfOthers(process_), "Unit: ollama.service");
  EXPECT_EQ(folderOfOwn(process_), "");
  EXPECT_EQ(machine().foldersRead, 0);
}

TEST_F(Whereabouts, AreNeverThoseOfALaterProcessWithThePid) {
  machine().find(7)->identity = 71;
  EXPECT_EQ(folderOfOwn(process_), "");
  process_.isProtected = true;
  EXPECT_EQ(placeOfOthers(process_), "");
}

TEST_F(Whereabouts, AreUnknownOfAProcessThatCanNotBeTold) {
  process_.identity.reset();
  EXPECT_EQ(folderOfOwn(process_), "");
  EXPECT_EQ(machine().foldersRead, 0);
  process_.isProtected = true;
  EXPECT_EQ(placeOfOthers(process_), "");
}

}  // namespace
