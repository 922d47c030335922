#include "frontends/appkit/settings_window.h"

#include <gtest/gtest.h>

#include "app/branding.h"
#include "app/settings_view.h"
#include "macos/mac_test.h"

namespace {

class SettingsWindow : public MacTest {
 protected:
  NSWindow* window = settingsWindow(SettingsView::lines());
  NSStackView* form = static_cast<NSStackView*>([window contentView]);
};

TEST_F(SettingsWindow, HasItsSizeAndCanBeClosed) {
  EXPECT_EQ([window frame].size.width, 400);
  EXPECT_EQ([window frame].size.height, 260);
  EXPECT_EQ([window styleMask], NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
  EXPECT_FALSE([window isReleasedWhenClosed]);
  EXPECT_STREQ([[window title] UTF8String], "Vorda Settings");
  EXPECT_EQ([window isVisible], NO);
}

TEST_F(SettingsWindow, FormIsPaddedAndFillsIt) {
  EXPECT_TRUE(NSEqualRects([form frame], NSMakeRect(0, 0, 400, 260)));
  const NSEdgeInsets insets = [form edgeInsets];
  for (const CGFloat inset : {insets.top, insets.left, insets.bottom, insets.right}) {
    EXPECT_EQ(inset, 24);
  }
  EXPECT_EQ([form orientation], NSUserInterfaceLayoutOrientationVertical);
  EXPECT_EQ([form alignment], NSLayoutAttributeLeading);
  EXPECT_TRUE([form translatesAutoresizingMaskIntoConstraints]);
}

TEST_F(SettingsWindow, SaysItsSixTextsInTheirStyles) {
  struct Text {
    std::string words;
    const char* font;
    const char* color;
    double paddingAbove;
  };
  const std::vector<Text> texts{
      {"Vorda", "UICTFontTextStyleTitle2 bold", "labelColor", 0},
      {"See everything. Control everything.", "UICTFontTextStyleBody", "secondaryLabelColor", 0},
      {"Developed by Halvek", "UICTFontTextStyleCaption1", "secondaryLabelColor", 4},
      {Branding::makerLine(), "UICTFontTextStyleCaption2", "tertiaryLabelColor", 0},
      {"Click Vorda² in the menu bar to manage processes.", "UICTFontTextStyleBody", "labelColor",
       8},
      {Branding::copyrightLine(), "UICTFontTextStyleCaption2", "tertiaryLabelColor", 8},
  };
  ASSERT_EQ([[form viewsInGravity:NSStackViewGravityTop] count], texts.size());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    NSTextField* field = [[form viewsInGravity:NSStackViewGravityTop] objectAtIndex:i];
    EXPECT_EQ([[field stringValue] UTF8String], texts[i].words);
    EXPECT_STREQ([[[field font] description] UTF8String], texts[i].font) << texts[i].words;
    EXPECT_STREQ([[[field textColor] description] UTF8String], texts[i].color) << texts[i].words;
    EXPECT_EQ([field preferredMaxLayoutWidth], 400 - 2 * 24);
    if (i == 0) continue;
    NSView* above = [[form viewsInGravity:NSStackViewGravityTop] objectAtIndex:i - 1];
    EXPECT_EQ([form customSpacingAfterView:above], [form spacing] + texts[i].paddingAbove);
  }
}

}  // namespace
