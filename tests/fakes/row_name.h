#pragma once

#include <gtest/gtest.h>

#include <string>

/// Names the tests of a table after the `name` of each row.
template <typename Row>
std::string rowName(const testing::TestParamInfo<Row>& info) {
  return info.param.name;
}
