// Which colours KDE's files say that the user wants.
#include "frontends/qt/kde_colors.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "frontends/qt/event_loop.h"
#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

namespace {

constexpr const char* kDark =
    "[Colors:Button]\nBackgroundNormal=49,54,59\nForegroundNormal=252,252,252\n"
    "[Colors:Selection]\nBackgroundNormal=61,174,233\nForegroundNormal=#fcfcfc\n"
    "[Colors:View]\nBackgroundNormal=27,30,32\nForegroundNormal=252,252,252,255\n"
    "[Colors:Window]\nBackgroundNormal = 42,46,50\nForegroundNormal=252,252,252\n"
    "[General]\nColorScheme=BreezeDark\n";

TEST(KdeColors, AreRead) {
  const KdeColors colors = readKdeColors(kDark);
  EXPECT_EQ(colors.scheme, "BreezeDark");
  ASSERT_TRUE(colors.palette);
  EXPECT_EQ(colors.palette->color(QPalette::Window), QColor(42, 46, 50));
  EXPECT_EQ(colors.palette->color(QPalette::Base), QColor(27, 30, 32));
  EXPECT_EQ(colors.palette->color(QPalette::Text), QColor(252, 252, 252));
  EXPECT_EQ(colors.palette->color(QPalette::Button), QColor(49, 54, 59));
  EXPECT_EQ(colors.palette->color(QPalette::Highlight), QColor(61, 174, 233));
  EXPECT_EQ(colors.palette->color(QPalette::HighlightedText), QColor(0xfc, 0xfc, 0xfc));
}

struct BadRow {
  const char* name;
  const char* file;
};
class KdeColorsWithout : public testing::TestWithParam<BadRow> {};
TEST_P(KdeColorsWithout, AWindowsColorsAreNone) {
  EXPECT_FALSE(readKdeColors(GetParam().file).palette);
}
INSTANTIATE_TEST_SUITE_P(
    Table, KdeColorsWithout,
    testing::Values(
        BadRow{"Empty", ""}, BadRow{"SchemeAlone", "[General]\nColorScheme=Oxygen\n"},
        BadRow{"OneOfTwo", "[Colors:Window]\nBackgroundNormal=1,2,3\n"},
        BadRow{"OtherGroup", "[Colors:View]\nBackgroundNormal=1,2,3\nForegroundNormal=4,5,6\n"},
        BadRow{"OutOfRange", "[Colors:Window]\nBackgroundNormal=1,2,256\nForegroundNormal=4,5,6\n"},
        BadRow{"Negative", "[Colors:Window]\nBackgroundNormal=1,2,-3\nForegroundNormal=4,5,6\n"},
        BadRow{"Words", "[Colors:Window]\nBackgroundNormal=a,b,c\nForegroundNormal=d,e,f\n"},
        BadRow{"Binary", "\x01[[[=\n====\n[\n]"}),
    [](const auto& row) { return std::string(row.param.name); });

class WatchedKdeColors : public testing::Test {
 protected:
  void write(const std::string& text) const {
    const auto written = folder_ / "kdeglobals.new";
    std::ofstream(written) << text;
    std::filesystem::rename(written, folder_ / "kdeglobals");
  }

  TempFolder folder_;
  ScopedVariable config_{"XDG_CONFIG_HOME", folder_.path().c_str()};
  ScopedVariable others_{"XDG_CONFIG_DIRS", (folder_ / "others").c_str()};
  ScopedVariable data_{"XDG_DATA_HOME", (folder_ / "data").c_str()};
  ScopedVariable desktop_{"XDG_CURRENT_DESKTOP", "KDE"};
};

TEST_F(WatchedKdeColors, AreFollowed) {
  KdeColorsWatch watch;
  EXPECT_FALSE(watch.palette());
  const auto become = [&watch](int red) {
    return eventually([&watch, red] {
      return watch.palette() && watch.palette()->color(QPalette::Window).red() == red;
    });
  };
  for (const int red : {42, 142, 43}) {
    std::string file = kDark;
    file.replace(file.find("42,46,50"), 2, std::to_string(red));
    write(file);
    EXPECT_TRUE(become(red)) << "another file of that name " << red;
  }
  std::ofstream(folder_ / "kdeglobals") << kDark;
  EXPECT_TRUE(become(42)) << "written in place";
}

TEST_F(WatchedKdeColors, AreThoseOfTheSchemeThatIsNamed) {
  std::filesystem::create_directories(folder_ / "data" / "color-schemes");
  std::ofstream(folder_ / "data" / "color-schemes" / "Night.colors") << kDark;
  write("[General]\nColorScheme=Night\n");
  const KdeColorsWatch watch;
  ASSERT_TRUE(watch.palette());
  EXPECT_EQ(watch.palette()->color(QPalette::Window), QColor(42, 46, 50));
}

TEST_F(WatchedKdeColors, AreNoneOnOtherDesktops) {
  const ScopedVariable other("XDG_CURRENT_DESKTOP", "XFCE");
  write(kDark);
  EXPECT_FALSE(KdeColorsWatch().palette());
}

}  // namespace
