#include "frontends/appkit/app_kit_front_end.h"

#include <utility>

#include "frontends/appkit/alert_panel.h"
#include "frontends/appkit/menu_items.h"
#include "frontends/appkit/scheduled_work.h"
#include "frontends/appkit/shared_application.h"
#include "frontends/appkit/strip_view.h"
#include "platform/macos/foundation_text.h"
#include "ui/spoken_menu.h"

namespace {

constexpr double kFadingSeconds = 0.5;

}  // namespace

AppKitFrontEnd::AppKitFrontEnd()
    : statusItem_(
          [[[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength] retain]),
      rootMenu_([[NSMenu alloc] init]),
      target_([[VordaMenuTarget alloc] init]) {
  [[statusItem_ button] setImage:nil];
  [rootMenu_ setDelegate:target_];
  [statusItem_ setMenu:rootMenu_];
}

AppKitFrontEnd::~AppKitFrontEnd() {
  reportTo(nullptr);
  [rootMenu_ setDelegate:nil];
  [statusItem_ setMenu:nil];
  [[NSStatusBar systemStatusBar] removeStatusItem:statusItem_];
  [target_ release];
  [rootMenu_ release];
  [statusItem_ release];
}

void AppKitFrontEnd::reportTo(MenuDelegate* delegate) {
  [target_ reportTo:delegate ofMenu:rootMenu_];
  if (delegate == nullptr && pendingFill_) pendingFill_->cancel();
}

void AppKitFrontEnd::setTitle(const std::string& title) {
  [[statusItem_ button] setTitle:platform::nsString(title)];
  [[statusItem_ button] setAccessibilityLabel:platform::nsString(spokenText(title))];
}

void AppKitFrontEnd::setToolTip(const std::string& toolTip) {
  [[statusItem_ button] setToolTip:platform::nsString(toolTip)];
}

// AppKit forbids changing a menu while it reports that the menu has closed, because the chosen
// item sends its action only afterwards. So the change waits; the menu is not visible meanwhile.
void AppKitFrontEnd::menuRebuilt(std::shared_ptr<const Menu> menu) {
  if (pendingFill_) pendingFill_->cancel();
  if ([target_ reportsClose]) {
    pendingFill_ = after(kFadingSeconds, [this, menu = std::move(menu)] { fill(*menu); });
  } else {
    fill(*menu);
  }
}

void AppKitFrontEnd::fill(const Menu& menu) {
  @autoreleasepool {
    fillMenu(rootMenu_, menu.items, target_);
  }
}

// The view shares the strip, so it only has to be drawn again. No other item has a view.
void AppKitFrontEnd::stripChanged(const MemoryPressureView&) {
  @autoreleasepool {
    for (NSMenuItem* item in [rootMenu_ itemArray]) {
      if ([item view] == nil) continue;
      [[item view] setNeedsDisplay:YES];
      [item setAccessibilityLabel:[static_cast<VordaStripView*>([item view]) spokenText]];
    }
  }
}

void AppKitFrontEnd::cancelTracking() {
  [[statusItem_ menu] cancelTracking];
}

int AppKitFrontEnd::runModal(const Alert& alert) {
  return runAlertPanel(alert);
}

std::shared_ptr<ScheduledWork> AppKitFrontEnd::every(double seconds, std::function<void()> work) {
  return repeatOnMainRunLoop(seconds, std::move(work));
}

std::shared_ptr<ScheduledWork> AppKitFrontEnd::after(double seconds, std::function<void()> work) {
  return runOnMainQueue(seconds, std::move(work));
}

void AppKitFrontEnd::terminate() {
  [sharedApplication() terminate:nil];
}
