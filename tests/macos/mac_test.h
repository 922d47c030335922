#pragma once

#include <gtest/gtest.h>

#include "macos/appkit/record.h"
#include "macos/darwin_double.h"
#include "macos/foundation_double.h"
#include "macos/stage.h"

/// Each test has a machine of its own.
class MacTest : public testing::Test {
 protected:
  MacTest() {
    darwin::resetKernel();
    appkit::reset();
    Stage::reset();
  }

 private:
  FoundationDouble foundation_;
};

/// The same for tables.
template <typename Row>
class MacTestWith : public MacTest, public testing::WithParamInterface<Row> {};
