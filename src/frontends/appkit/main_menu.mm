#include "frontends/appkit/main_menu.h"

NSMenu* mainMenu(id target, SEL showSettings) {
  NSMenu* program = [[[NSMenu alloc] init] autorelease];
  NSMenuItem* settings = [program addItemWithTitle:@"Settings…"
                                            action:showSettings
                                     keyEquivalent:@","];
  [settings setTarget:target];
  [program addItemWithTitle:@"Close Window" action:@selector(performClose:) keyEquivalent:@"w"];

  NSMenu* menu = [[[NSMenu alloc] init] autorelease];
  NSMenuItem* item = [menu addItemWithTitle:@"Vorda" action:NULL keyEquivalent:@""];
  [item setSubmenu:program];
  return menu;
}
