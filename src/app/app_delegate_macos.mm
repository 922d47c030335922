#include "app/app_delegate_macos.h"

#include <memory>

#include "app/branding.h"
#include "app/settings_view.h"
#include "frontends/appkit/app_kit_front_end.h"
#include "frontends/appkit/main_menu.h"
#include "frontends/appkit/settings_window.h"
#include "frontends/appkit/shared_application.h"
#include "ui/status_bar_controller.h"

@implementation AppDelegate

- (void)dealloc {
  if (frontEnd_ != nullptr) frontEnd_->reportTo(nullptr);
  delete statusController_;
  delete frontEnd_;
  [settingsWindow_ release];
  [super dealloc];
}

- (StatusBarController*)statusController {
  return statusController_;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  NSApplication* application = sharedApplication();
  [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
  frontEnd_ = new AppKitFrontEnd;
  statusController_ = new StatusBarController(*frontEnd_, Branding::aboutAlert());
  frontEnd_->reportTo(statusController_);
  [application setMainMenu:mainMenu(self, @selector(showSettings:), @selector(quit:))];
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
  return NO;
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag {
  [self showSettings:sender];
  return NO;
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app {
  return YES;
}

- (void)showSettings:(id)sender {
  if (settingsWindow_ == nil) settingsWindow_ = [settingsWindow(SettingsView::lines()) retain];
  [sharedApplication() activateIgnoringOtherApps:YES];
  [settingsWindow_ makeKeyAndOrderFront:sender];
  // Since macOS 14 a program without a Dock icon may be refused to become the active one.
  [settingsWindow_ orderFrontRegardless];
}

- (void)quit:(id)sender {
  if (statusController_ == nullptr) return;
  statusController_->perform(std::make_shared<const MenuItem>(MenuItem{.action = Action::quitApp}));
}

@end
