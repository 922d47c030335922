#include "frontends/appkit/strip_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/recording_canvas.h"
#include "macos/appkit/user.h"
#include "macos/mac_test.h"
#include "ui/strip_text.h"

namespace {

using testing::HasSubstr;
using testing::IsSupersetOf;

using Commands = std::vector<std::string>;

class StripView : public MacTest {
 protected:
  StripView() {
    strip->segments = {{0.25, {0.2, 0.92, 0.55}, "Ollama Server"}, {0.5, Color::white(0.55), "x"}};
    strip->pressure = 0.6;
    view = [[VordaStripView alloc] initWithStrip:strip];
  }
  ~StripView() override { [view release]; }

  std::shared_ptr<MemoryPressureView> strip = std::make_shared<MemoryPressureView>();
  VordaStripView* view = nil;
};

TEST_F(StripView, HasItsSize) {
  EXPECT_TRUE(NSEqualRects([view frame], NSMakeRect(0, 0, 304, 40)));
  EXPECT_TRUE(NSEqualSizes([view intrinsicContentSize], NSMakeSize(280, 36)));
  EXPECT_EQ([view autoresizingMask], NSViewWidthSizable);
}

TEST_F(StripView, DrawsTheStripInItsBoundsOverTheBaseClass) {
  [view setFrame:NSMakeRect(7, 3, 320, 44)];
  RecordingCanvas canvas;
  strip->draw(canvas, {0, 0, 320, 44});
  Commands expected{"super"};
  expected.insert(expected.end(), canvas.commands.begin(), canvas.commands.end());
  EXPECT_EQ(appkit::drawn(view), expected);
  EXPECT_GT(expected.size(), 10);
  EXPECT_EQ(appkit::record().savedGraphicsStates, 0);
}

TEST_F(StripView, DrawsWhatTheStripIsNow) {
  strip->segments.clear();
  RecordingCanvas canvas;
  strip->draw(canvas, {0, 0, 304, 40});
  EXPECT_EQ(appkit::drawn(view).size(), canvas.commands.size() + 1);
}

TEST_F(StripView, NarrowViewDrawsTheBaseClassAlone) {
  [view setFrame:NSMakeRect(0, 0, 24, 40)];
  EXPECT_EQ(appkit::drawn(view), Commands{"super"});
}

TEST_F(StripView, HasAnOutlineOnlyWhereTheUserWantsContrast) {
  Commands expected = appkit::drawn(view);
  appkit::record().increasesContrast = true;
  expected.push_back("strokeRoundedRect (10 6 284 28) r14 labelColor w1");
  EXPECT_EQ(appkit::drawn(view), expected) << "its own colours stay";
}

TEST_F(StripView, OutlinesBothTracksWhereTheCardsHaveTheirs) {
  strip->gpu = GpuTrack{.segments = {{0.3, Color::white(0.55), "x"}}, .pressure = 0.3};
  VordaStripView* tall = [[[VordaStripView alloc] initWithStrip:strip] autorelease];
  EXPECT_TRUE(NSEqualRects([tall frame], NSMakeRect(0, 0, 304, 56))) << "there is room for both";
  EXPECT_TRUE(NSEqualSizes([tall intrinsicContentSize], NSMakeSize(280, 52)));
  Commands expected = appkit::drawn(tall);
  EXPECT_THAT(expected, IsSupersetOf({HasSubstr("fillRoundedRect (10 22 284 28) r14 "),
                                      HasSubstr("fillRoundedRect (10 6 284 10) r5 ")}))
      << "the tracks";
  appkit::record().increasesContrast = true;
  expected.push_back("strokeRoundedRect (10 22 284 28) r14 labelColor w1");
  expected.push_back("strokeRoundedRect (10 6 284 10) r5 labelColor w1");
  EXPECT_EQ(appkit::drawn(tall), expected);
}

TEST_F(StripView, IsToldInWordsToThoseWhoCannotSeeIt) {
  EXPECT_EQ([[view spokenText] UTF8String], stripDescription(*strip));
  EXPECT_NE(stripDescription(*strip).find("Ollama Server"), std::string::npos);
}

TEST_F(StripView, KeepsTheStripAsLongAsItself) {
  const std::weak_ptr<MemoryPressureView> weak = strip;
  strip.reset();
  EXPECT_FALSE(weak.expired());
  [view release];
  view = nil;
  EXPECT_TRUE(weak.expired());
}

}  // namespace
