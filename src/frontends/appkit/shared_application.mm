#include "frontends/appkit/shared_application.h"

#include <cstdlib>

NSApplication* sharedApplication() {
  NSApplication* application = [NSApplication sharedApplication];
  if (application == nil) std::abort();
  return application;
}
