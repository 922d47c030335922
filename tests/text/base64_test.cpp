#include "text/base64.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct Base64Row {
  const char* name;
  std::string bytes;
  std::string encoded;
};

class Base64 : public testing::TestWithParam<Base64Row> {};

TEST_P(Base64, IsPaddedAndInOneLine) {
  EXPECT_EQ(text::inBase64(GetParam().bytes), GetParam().encoded);
}

INSTANTIATE_TEST_SUITE_P(Table, Base64,
                         testing::Values(Base64Row{"Nothing", "", ""},
                                         Base64Row{"One", "g", "Zw=="},
                                         Base64Row{"Two", "go", "Z28="},
                                         Base64Row{"Three", "goo", "Z29v"},
                                         Base64Row{"Four", "good", "Z29vZA=="},
                                         Base64Row{"HighBits", "\xFF\xEF\xBE", "/+++"}),
                         rowName<Base64Row>);

}  // namespace
