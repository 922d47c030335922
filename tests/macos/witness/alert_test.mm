// The edition's alerts as a user sees and answers them.
#import <AppKit/AppKit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "frontends/appkit/alert_panel.h"
#include "macos/witness/witness.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kPatience{120};

}  // namespace

/// A user who waits for the alert that is about to open, reads it, and clicks on one of its
/// buttons. An alert that doesn't open, has no such button or does not close is stopped in time.
@interface AlertReader : NSObject {
 @public
  std::vector<std::string> texts_;
  std::vector<std::string> buttons_;
  std::string choice_;
  BOOL hasClicked_;
  BOOL hasGivenUp_;

 @private
  Clock::time_point begin_;
  NSTimer* timer_;
}
- (instancetype)initWithChoice:(const std::string&)choice;
- (void)leave;
@end

@implementation AlertReader

- (instancetype)initWithChoice:(const std::string&)choice {
  self = [super init];
  if (self == nil) return nil;
  choice_ = choice;
  begin_ = Clock::now();
  constexpr double kSeconds = 0.05;
  timer_ = [NSTimer timerWithTimeInterval:kSeconds
                                   target:self
                                 selector:@selector(look:)
                                 userInfo:nil
                                  repeats:YES];
  [[NSRunLoop currentRunLoop] addTimer:timer_ forMode:NSModalPanelRunLoopMode];
  return self;
}

// The timer keeps its target.
- (void)leave {
  [timer_ invalidate];
}

- (NSButton*)readIn:(NSView*)view {
  NSButton* chosen = nil;
  for (NSView* below in [view subviews]) {
    if ([below isHidden]) continue;
    if ([below isKindOfClass:[NSButton class]]) {
      const std::string title = [[static_cast<NSButton*>(below) title] UTF8String];
      if (!title.empty()) buttons_.push_back(title);
      if (title == choice_) chosen = static_cast<NSButton*>(below);
    } else if ([below isKindOfClass:[NSTextField class]]) {
      texts_.emplace_back([[static_cast<NSTextField*>(below) stringValue] UTF8String]);
    } else if ([below isKindOfClass:[NSText class]]) {
      texts_.emplace_back([[static_cast<NSText*>(below) string] UTF8String]);
    }
    if (NSButton* deeper = [self readIn:below]) chosen = deeper;
  }
  return chosen;
}

- (void)look:(NSTimer*)timer {
  NSWindow* panel = [NSApp modalWindow];
  if (!hasClicked_ && [panel isVisible]) {
    texts_.clear();
    buttons_.clear();
    if (NSButton* button = [self readIn:[panel contentView]]) {
      hasClicked_ = YES;
      [button performClick:nil];
    }
  }
  if (!hasGivenUp_ && Clock::now() - begin_ > kPatience) {
    hasGivenUp_ = YES;
    [NSApp stopModal];
  }
  [self wake];
}

// A modal loop looks whether it was stopped when an event has come; a timer is none.
- (void)wake {
  constexpr auto kApplicationDefined = static_cast<NSEventType>(15);
  [NSApp postEvent:[NSEvent otherEventWithType:kApplicationDefined
                                      location:NSZeroPoint
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                       subtype:0
                                         data1:0
                                         data2:0]
           atStart:NO];
}

@end

namespace {

using testing::Contains;
using testing::IsSupersetOf;

class AlertWitness : public Witness {
 protected:
  /// Shows the alert to a reader who clicks on this; the alert's answer.
  int answerTo(const Alert& alert, const std::string& choice) {
    reader = [[[AlertReader alloc] initWithChoice:choice] autorelease];
    const int answer = runAlertPanel(alert);
    [reader leave];
    EXPECT_FALSE(reader->hasGivenUp_) << "no answer in time";
    return answer;
  }

  AlertReader* reader = nil;
};

const Alert kForceQuit{.messageText = "Force Quit?",
                       .informativeText = "This cannot be undone.",
                       .buttons = {"Force Quit", "Cancel"}};

TEST_F(AlertWitness, HasItsTextsAndButtons) {
  answerTo(kForceQuit, "Cancel");
  EXPECT_THAT(reader->texts_, Contains("Force Quit?"));
  EXPECT_THAT(reader->texts_, Contains("This cannot be undone."));
  // GNUstep's panel holds an unused one besides.
  EXPECT_THAT(reader->buttons_, IsSupersetOf({"Force Quit", "Cancel"}));
}

TEST_F(AlertWitness, AnswersByTheButtonThatIsClicked) {
  EXPECT_EQ(answerTo(kForceQuit, "Cancel"), kAlertFirstButtonReturn + 1);
  EXPECT_EQ(answerTo(kForceQuit, "Force Quit"), kAlertFirstButtonReturn);
}

TEST_F(AlertWitness, WithoutButtonsHasOneThatSaysOK) {
  answerTo({.messageText = "Process already gone"}, "OK");
  EXPECT_TRUE(reader->hasClicked_);
}

}  // namespace
