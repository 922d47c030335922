#include "frontends/appkit/alert_panel.h"

#import <AppKit/AppKit.h>

#include "frontends/appkit/pictures.h"
#include "frontends/appkit/shared_application.h"
#include "platform/macos/foundation_text.h"

namespace {

NSAlert* nsAlert(const Alert& alert) {
  NSAlert* panel = [[[NSAlert alloc] init] autorelease];
  [panel setMessageText:platform::nsString(alert.messageText)];
  [panel setInformativeText:platform::nsString(alert.informativeText)];
  if (alert.style == Alert::Style::warning) [panel setAlertStyle:NSAlertStyleWarning];
  // Without a badge that is nil, and AppKit's own icon stays.
  if (alert.icon == Alert::Icon::badge) [panel setIcon:halvekBadgeImage(Alert::kBadgeSide)];
  for (const std::string& title : alert.buttons) {
    [panel addButtonWithTitle:platform::nsString(title)];
  }
  return panel;
}

}  // namespace

int runAlertPanel(const Alert& alert) {
  @autoreleasepool {
    // An alert of a program without a Dock icon may open behind other windows.
    if (alert.activatesProgram) {
      [sharedApplication() activateIgnoringOtherApps:YES];
    }
    const NSModalResponse response = [nsAlert(alert) runModal];
    static_assert(kAlertFirstButtonReturn == 1000);  // NSAlertFirstButtonReturn
    return response >= NSAlertFirstButtonReturn ? static_cast<int>(response) : kAlertDismissed;
  }
}
