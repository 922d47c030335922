#include <utility>

#include "macos/appkit/registry.h"
#include "macos/appkit/user.h"

namespace {

NSWindow* onScreen = nil;

}  // namespace

@implementation NSWindow

@synthesize title = title_;
@synthesize frame = frame_;
@synthesize styleMask = styleMask_;
@synthesize contentView = contentView_;
@synthesize releasedWhenClosed = releasedWhenClosed_;
@synthesize visible = visible_;
@synthesize collectionBehavior = collectionBehavior_;

- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag {
  self = [super init];
  if (self != nil) {
    frame_ = contentRect;  // as if the title took no room
    styleMask_ = style;
    releasedWhenClosed_ = YES;
  }
  return self;
}

- (void)dealloc {
  if (onScreen == self) onScreen = nil;
  [title_ release];
  [contentView_ release];
  [super dealloc];
}

- (void)center {
}

- (void)close {
  visible_ = NO;
  if (onScreen == self) onScreen = nil;
  if (releasedWhenClosed_) [self release];
}

- (void)performClose:(id)sender {
  if (styleMask_ & NSWindowStyleMaskClosable) [self close];
}

- (void)makeKeyAndOrderFront:(id)sender {
  visible_ = YES;
  onScreen = self;
  appkit::record().windowIsInFront = !appkit::record().refusesActivation;
}

- (void)orderFrontRegardless {
  visible_ = YES;
  onScreen = self;
  appkit::record().windowIsInFront = true;
}

@end

@implementation NSAlert

@synthesize messageText = messageText_;
@synthesize informativeText = informativeText_;
@synthesize icon = icon_;

- (instancetype)init {
  self = [super init];
  if (self != nil) buttons_ = [[NSMutableArray alloc] init];
  return self;
}

- (void)dealloc {
  [messageText_ release];
  [informativeText_ release];
  [icon_ release];
  [buttons_ release];
  [super dealloc];
}

- (NSAlertStyle)alertStyle {
  return alertStyle_;
}

- (void)setAlertStyle:(NSAlertStyle)alertStyle {
  alertStyle_ = alertStyle;
  styleWasSet_ = YES;
}

- (NSArray*)buttons {
  return [[buttons_ copy] autorelease];
}

- (NSButton*)addButtonWithTitle:(NSString*)title {
  NSButton* button = [[[NSButton alloc] init] autorelease];
  [button setTitle:title];
  [buttons_ addObject:button];
  return button;
}

- (NSModalResponse)runModal {
  appkit::Record& record = appkit::record();
  appkit::ShownAlert shown{.messageText = [messageText_ UTF8String],
                           .informativeText = [informativeText_ UTF8String],
                           .programWasInFront = record.activations > 0,
                           .menuFaded = record.menuFades};
  if (styleWasSet_) shown.style = static_cast<int>(alertStyle_);
  if (icon_ != nil) {
    shown.icon = [appkit::fileOf(icon_) UTF8String];
    const NSSize size = [icon_ size];
    shown.iconSide = size.width == size.height ? size.width : -1;
  }
  for (NSButton* button in buttons_) shown.buttons.push_back([[button title] UTF8String]);
  record.alerts.push_back(shown);
  // The button that is there without having been added answers 0.
  int answer = [buttons_ count] == 0 ? 0 : NSAlertFirstButtonReturn;
  if (!record.answers.empty()) {
    answer = record.answers.front();
    record.answers.pop_front();
  }
  // Time goes on while the user reads.
  constexpr double kSeconds = 10;
  ++record.alertsOpen;
  if (const auto work = std::exchange(record.duringAlert, nullptr)) work();
  appkit::fireTimers();
  appkit::advanceMainQueue(kSeconds);
  --record.alertsOpen;
  return answer;
}

@end

@implementation NSApplication

@synthesize delegate = delegate_;
@synthesize mainMenu = mainMenu_;

+ (NSApplication*)sharedApplication {
  static NSApplication* shared = [[NSApplication alloc] init];
  return appkit::record().withoutApplication ? nil : shared;
}

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy {
  activationPolicy_ = activationPolicy;
  appkit::record().activationPolicy = static_cast<int>(activationPolicy);
  return YES;
}

- (NSApplicationActivationPolicy)activationPolicy {
  return activationPolicy_;
}

- (void)activateIgnoringOtherApps:(BOOL)flag {
  ++appkit::record().activations;
}

- (void)run {
  @autoreleasepool {  // the run loop empties its pool after each event
    [delegate_
        applicationDidFinishLaunching:
            [NSNotification notificationWithName:@"NSApplicationDidFinishLaunchingNotification"
                                          object:self]];
  }
  if (appkit::record().whileRunning) appkit::record().whileRunning();
}

- (void)terminate:(id)sender {
  ++appkit::record().terminations;
}

@end

@implementation NSWorkspace

+ (NSWorkspace*)sharedWorkspace {
  static NSWorkspace* shared = [[NSWorkspace alloc] init];
  return shared;
}

- (BOOL)accessibilityDisplayShouldIncreaseContrast {
  return appkit::record().increasesContrast;
}

- (BOOL)openURL:(NSURL*)url {
  appkit::record().openedUrls.push_back([[url absoluteString] UTF8String]);
  return YES;
}

@end

namespace appkit {

NSWindow* visibleWindow() {
  return onScreen;
}

}  // namespace appkit
