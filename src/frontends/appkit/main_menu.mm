#include "frontends/appkit/main_menu.h"

NSMenu* mainMenu(id target, SEL showSettings, SEL quit) {
  NSMenu* program = [[[NSMenu alloc] init] autorelease];
  NSMenuItem* settings = [program addItemWithTitle:@"Settings…"
                                            action:showSettings
                                     keyEquivalent:@","];
  [settings setTarget:target];
  [program addItemWithTitle:@"Close Window" action:@selector(performClose:) keyEquivalent:@"w"];
  [[program addItemWithTitle:@"Quit Vorda" action:quit keyEquivalent:@"q"] setTarget:target];

  NSMenu* menu = [[[NSMenu alloc] init] autorelease];
  NSMenuItem* item = [menu addItemWithTitle:@"Vorda" action:NULL keyEquivalent:@""];
  [item setSubmenu:program];
  return menu;
}
