#include "scanner/owner_names.h"

#include <gtest/gtest.h>

#include "fakes/scripted_platform.h"

namespace {

class OwnerNames : public testing::Test {
 protected:
  OwnerNames() { resetMachine(); }

  ProcessScanner::OwnerNames names;
};

TEST_F(OwnerNames, AreLoginsElseNumbers) {
  EXPECT_EQ(names.of(1000), "ada");
  EXPECT_EQ(names.of(0), "root");
  EXPECT_EQ(names.of(4294967294U), "uid 4294967294");
}

TEST_F(OwnerNames, AreEachAskedForOnce) {
  for (const std::uint32_t uid : {1000U, 1000U, 55U, 55U}) names.of(uid);
  EXPECT_EQ(machine().loginNameLookups, 2);
}

TEST_F(OwnerNames, AreAskedForAnewOnceAMinute) {
  constexpr int kScansInTwoMinutes = 24;
  for (int scan = 0; scan < kScansInTwoMinutes; ++scan) {
    names.beginScan();
    names.of(1000);
  }
  EXPECT_EQ(machine().loginNameLookups, 3);
}

}  // namespace
