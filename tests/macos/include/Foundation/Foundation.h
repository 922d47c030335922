// GNUstep's Foundation, and what the edition uses of Apple's beyond it.
#pragma once

#include_next <Foundation/Foundation.h>

@interface NSTask (Apple)
- (NSURL*)executableURL;
- (void)setExecutableURL:(NSURL*)executableURL;
- (BOOL)launchAndReturnError:(NSError**)error;
@end
