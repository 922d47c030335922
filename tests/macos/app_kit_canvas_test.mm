#include "frontends/appkit/app_kit_canvas.h"

#include <gtest/gtest.h>

#include "macos/mac_test.h"

namespace {

class AppKitColor : public MacTest {
 protected:
  static std::string words(const Color& color) { return [[nsColor(color) description] UTF8String]; }
};

TEST_F(AppKitColor, ColorsAreCalibratedRgb) {
  EXPECT_EQ(words({0.2, 0.9, 0.45, 0.35}), "rgb rgba(0.2 0.9 0.45 0.35)");
  EXPECT_EQ(words({0.5, 0.5, 0.6}), "rgb rgba(0.5 0.5 0.6 1)");
  EXPECT_EQ(words({0.6, 0.5, 0.5}), "rgb rgba(0.6 0.5 0.5 1)");
}

TEST_F(AppKitColor, GreysAreCalibratedWhite) {
  EXPECT_EQ(words(Color::white(0.12, 0.85)), "white rgba(0.12 0.12 0.12 0.85)");
  EXPECT_EQ(words(Color::white(0)), "white rgba(0 0 0 1)");
}

}  // namespace
