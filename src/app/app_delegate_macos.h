#pragma once

#import <AppKit/AppKit.h>

class AppKitFrontEnd;
class StatusBarController;

/// Makes the program an accessory (no Dock icon) when launching has finished, and owns its one
/// StatusBarController from then on.
@interface AppDelegate : NSObject <NSApplicationDelegate> {
 @private
  AppKitFrontEnd* frontEnd_;
  StatusBarController* statusController_;
  NSWindow* settingsWindow_;
}
/// nullptr until launching has finished.
- (StatusBarController*)statusController;
- (void)showSettings:(id)sender;
/// Does what choosing "Quit Vorda" does.
- (void)quit:(id)sender;
@end
