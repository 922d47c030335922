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
  // The image is nil where there is no badge; AppKit then shows its own icon.
  if (alert.icon == Alert::Icon::badge) [panel setIcon:halvekBadgeImage(Alert::kBadgeSide)];
  for (const std::string& title : alert.buttons) {
    [panel addButtonWithTitle:platform::nsString(title)];
  }
  return panel;
}

}  // namespace

int runAlertPanel(const Alert& alert) {
  @autoreleasepool {
    // The alert of a program without a Dock icon would otherwise open behind other windows.
    if (alert.activatesProgram) {
      [sharedApplication() activateIgnoringOtherApps:YES];
    }
    const NSModalResponse response = [nsAlert(alert) runModal];
    static_assert(kAlertFirstButtonReturn == 1000);  // NSAlertFirstButtonReturn
    return response >= NSAlertFirstButtonReturn ? static_cast<int>(response) : kAlertDismissed;
  }
}
