#pragma once

#import <AppKit/AppKit.h>

#include "ui/menu.h"

/// Who is told what happens to the menu.
class MenuEvents {
 public:
  virtual ~MenuEvents() = default;
  virtual void needsUpdate() = 0;
  virtual void willOpen() = 0;
  virtual void didClose() = 0;
  virtual void chosen(const MenuItem& item) = 0;
};

/// The delegate of the root menu, and the target of every item. Without events (nullptr) it
/// does nothing.
@interface VordaMenuTarget : NSObject <NSMenuDelegate> {
 @private
  MenuEvents* events_;
  NSMenu* rootMenu_;  // not retained
}
- (void)setEvents:(MenuEvents*)events ofMenu:(NSMenu*)rootMenu;

- (void)refreshNow;
- (void)openAM;
- (void)about;
- (void)quitApp;
- (void)openDockerHelp;
- (void)quitProcess:(NSMenuItem*)sender;
- (void)forceProcess:(NSMenuItem*)sender;
- (void)showDetails:(NSMenuItem*)sender;
- (void)unloadByLabel:(NSMenuItem*)sender;
- (void)unloadAgent:(NSMenuItem*)sender;
- (void)loadAgent:(NSMenuItem*)sender;
@end

/// The message that asks VordaMenuTarget for this action; NULL for none.
SEL selectorOf(Action action);
