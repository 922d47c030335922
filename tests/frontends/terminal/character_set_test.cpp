#include "frontends/terminal/character_set.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "fakes/row_name.h"
#include "tools/scoped_variable.h"

namespace {

struct LocaleNameRow {
  const char* name;
  const char* locale;
  bool utf8;
};

class LocaleName : public testing::TestWithParam<LocaleNameRow> {};

TEST_P(LocaleName, SaysUtf8) {
  EXPECT_EQ(terminal::namesUtf8(GetParam().locale), GetParam().utf8);
}

INSTANTIATE_TEST_SUITE_P(Table, LocaleName,
                         testing::Values(LocaleNameRow{"Usual", "de_DE.UTF-8", true},
                                         LocaleNameRow{"AsLocaleListsIt", "en_US.utf8", true},
                                         LocaleNameRow{"WithAVariant", "ca_ES.utf8@valencia", true},
                                         LocaleNameRow{"Plain", "C.UTF-8", true},
                                         LocaleNameRow{"OtherSet", "de_DE.ISO-8859-1", false},
                                         LocaleNameRow{"Posix", "POSIX", false},
                                         LocaleNameRow{"NoSet", "de_DE", false},
                                         LocaleNameRow{"Longer", "x.utf8x", false},
                                         LocaleNameRow{"Empty", "", false}),
                         rowName<LocaleNameRow>);

/// Gives the test's own character set back.
class TakeCharacterSet : public testing::Test {
 protected:
  ~TakeCharacterSet() override { std::setlocale(LC_CTYPE, before_.c_str()); }

 private:
  std::string before_ = std::setlocale(LC_CTYPE, nullptr);
};

TEST_F(TakeCharacterSet, ALocaleThatWasNeverGeneratedCountsAsItIsNamed) {
  const ScopedVariable all("LC_ALL", "xx_YY.UTF-8");
  EXPECT_TRUE(terminal::takeCharacterSet());
}

TEST_F(TakeCharacterSet, AnOldLocaleIsNotUtf8) {
  const ScopedVariable all("LC_ALL", "POSIX");
  EXPECT_FALSE(terminal::takeCharacterSet());
}

}  // namespace
