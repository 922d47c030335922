#pragma once

#include <gtest/gtest.h>

#include "macos/autorelease_pool.h"
#include "macos/stage.h"

/// Each test has a disk and a launchctl of its own.
class StageTest : public testing::Test {
 protected:
  StageTest() { Stage::reset(); }

 private:
  AutoreleasePool pool_;
};

/// The same for tables.
template <typename Row>
class StageTestWith : public StageTest, public testing::WithParamInterface<Row> {};
