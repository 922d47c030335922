#include "app/vorda_app_macos.h"

#import <AppKit/AppKit.h>

#include <cstdlib>

#include "app/app_delegate_macos.h"
#include "frontends/appkit/shared_application.h"

int VordaApp::main() {
  @autoreleasepool {
    NSApplication* application = sharedApplication();
    AppDelegate* delegate = [[AppDelegate alloc] init];  // the application does not keep it
    [application setDelegate:delegate];
    [application run];
    [application setDelegate:nil];
    [delegate release];
  }
  return EXIT_SUCCESS;
}
