// The edition's Settings window and the shortcuts that work in it.
#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "app/settings_view.h"
#include "frontends/appkit/main_menu.h"
#include "frontends/appkit/settings_window.h"
#include "macos/witness/witness.h"

/// Counts what the main menu asks for.
@interface ShortcutCounter : NSObject {
 @public
  int settings_;
  int quits_;
}
- (void)showSettings:(id)sender;
- (void)quit:(id)sender;
@end

@implementation ShortcutCounter

- (void)showSettings:(id)sender {
  ++settings_;
}

- (void)quit:(id)sender {
  ++quits_;
}

@end

namespace {

class SettingsWitness : public Witness {
 protected:
  SettingsWitness() {
    [window makeKeyAndOrderFront:nil];
    [window display];
  }
  ~SettingsWitness() override { [window close]; }

  /// Its lines with their places in the window, from top to bottom.
  struct ShownLine {
    std::string text;
    NSRect frame;
  };
  std::vector<ShownLine> shownLines() const {
    std::vector<ShownLine> lines;
    collect([window contentView], lines);
    std::ranges::sort(lines, std::greater<>(), [](const auto& line) { return NSMaxY(line.frame); });
    return lines;
  }

  /// A key with Command; its code is what a Mac tells it by on any keyboard.
  static void press(NSString* key, unsigned short code) {
    constexpr auto kKeyDown = static_cast<NSEventType>(10);
    constexpr NSUInteger kCommand = 1 << 20;
    [NSApp sendEvent:[NSEvent keyEventWithType:kKeyDown
                                            location:NSZeroPoint
                                       modifierFlags:kCommand
                                           timestamp:0
                                        windowNumber:0
                                             context:nil
                                          characters:key
                         charactersIgnoringModifiers:key
                                           isARepeat:NO
                                             keyCode:code]];
  }

  const std::vector<SettingsView::Line> texts = SettingsView::lines();
  // Kept, as the edition does: GNUstep's screen may have events for a window that is gone.
  NSWindow* window = [settingsWindow(texts) retain];

 private:
  void collect(NSView* view, std::vector<ShownLine>& lines) const {
    for (NSView* below in [view subviews]) {
      if ([below isKindOfClass:[NSTextField class]]) {
        lines.push_back({[[static_cast<NSTextField*>(below) stringValue] UTF8String],
                         [view convertRect:[below frame] toView:[window contentView]]});
      }
      collect(below, lines);
    }
  }
};

TEST_F(SettingsWitness, IsAWindowWithATitle) {
  EXPECT_TRUE([window isVisible]);
  EXPECT_STREQ([[window title] UTF8String], SettingsView::kTitle);
  EXPECT_EQ([[window contentView] bounds].size.width, SettingsView::kWidth);
  EXPECT_EQ([[window contentView] bounds].size.height, SettingsView::kHeight);
}

TEST_F(SettingsWitness, ShowsItsLinesBelowEachOther) {
  const auto lines = shownLines();
  ASSERT_EQ(lines.size(), texts.size());
  const NSRect room = NSInsetRect([[window contentView] bounds], SettingsView::kPadding - 4,
                                  SettingsView::kPadding - 4);  // a label's own edge
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(lines[i].text, texts[i].text);
    EXPECT_TRUE(NSContainsRect(room, lines[i].frame)) << lines[i].text;
    if (i > 0) EXPECT_LE(NSMaxY(lines[i].frame), NSMinY(lines[i - 1].frame)) << lines[i].text;
  }
  EXPECT_GT(lines.front().frame.size.height, lines.back().frame.size.height) << "a title";
}

TEST_F(SettingsWitness, WritesEachLine) {
  NSView* content = [window contentView];
  NSBitmapImageRep* picture = [content bitmapImageRepForCachingDisplayInRect:[content bounds]];
  [content cacheDisplayInRect:[content bounds] toBitmapImageRep:picture];
  const double height = [content bounds].size.height;
  for (const ShownLine& line : shownLines()) {
    double least = 4;
    double most = 0;
    for (int up = 0; up < line.frame.size.height; ++up) {
      for (int right = 0; right < 40; ++right) {
        const double y = height - NSMinY(line.frame) - up - 1;
        const Pixel there = pixel(picture, content, NSMinX(line.frame) + right, y);
        const double ink = there.sum() + there.alpha;  // the background may let all through
        least = std::min(least, ink);
        most = std::max(most, ink);
      }
    }
    EXPECT_GT(most, least + 0.1) << line.text << ": nothing but background";
  }
}

TEST_F(SettingsWitness, ShortcutsDoWhatTheMainMenuSays) {
  ShortcutCounter* counter = [[ShortcutCounter alloc] init];  // the menu stays, and so it does
  [NSApp setMainMenu:mainMenu(counter, @selector(showSettings:), @selector(quit:))];
  press(@"q", 12);
  EXPECT_EQ(counter->quits_, 1);
  EXPECT_EQ(counter->settings_, 0);
  press(@",", 43);
  EXPECT_EQ(counter->settings_, 1);
  press(@"x", 7);
  EXPECT_EQ(counter->quits_ + counter->settings_, 2) << "nobody's";
}

TEST_F(SettingsWitness, ClosesAndOpensAgain) {
  [window performClose:nil];
  EXPECT_FALSE([window isVisible]);
  [window makeKeyAndOrderFront:nil];
  EXPECT_TRUE([window isVisible]);
}

}  // namespace
