#pragma once

#include "macos/appkit/record.h"
#include "macos/darwin_double.h"
#include "macos/foundation_double.h"
#include "macos/stage_test.h"

/// Each test has a machine of its own.
class MacTest : public StageTest {
 protected:
  MacTest() {
    darwin::resetKernel();
    appkit::reset();
    foundation::useStage();
  }

  void TearDown() override {
    StageTest::TearDown();
    EXPECT_EQ(appkit::record().usesOfGoneStatusItem, 0) << "the status item was not kept";
  }
};

/// The same for tables.
template <typename Row>
class MacTestWith : public MacTest, public testing::WithParamInterface<Row> {};
