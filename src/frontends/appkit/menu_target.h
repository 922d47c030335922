#pragma once

#import <AppKit/AppKit.h>

#include "ui/front_end.h"

/// The delegate of the root menu, and the target of every item: it passes what AppKit reports on
/// to a MenuDelegate, if it has one. A choice is passed on in the run loop's next turn, when the
/// menu is gone from the screen: an alert that opens while a menu fades leaves an invisible window
/// behind, which swallows clicks. What was chosen is copied at once, so that the menu may be
/// opened, closed and filled anew in the meantime; while it or an alert is open, the choice waits.
@interface VordaMenuTarget : NSObject <NSMenuDelegate> {
 @private
  MenuDelegate* delegate_;
  NSMenu* rootMenu_;  // not retained
  BOOL reportsClose_;
}
- (void)reportTo:(MenuDelegate*)delegate ofMenu:(NSMenu*)rootMenu;

/// Whether it is just reporting that the menu has closed.
- (BOOL)reportsClose;

- (void)refreshNow;
- (void)openAM;
- (void)about;
- (void)quitApp;
- (void)openDockerHelp;
- (void)quitProcess:(NSMenuItem*)sender;
- (void)forceProcess:(NSMenuItem*)sender;
- (void)quitFamily:(NSMenuItem*)sender;
- (void)forceFamily:(NSMenuItem*)sender;
- (void)showDetails:(NSMenuItem*)sender;
- (void)unloadByLabel:(NSMenuItem*)sender;
- (void)unloadAgent:(NSMenuItem*)sender;
- (void)loadAgent:(NSMenuItem*)sender;
@end

/// The message that makes VordaMenuTarget perform this action; NULL where there is none.
SEL selectorOf(Action action);
