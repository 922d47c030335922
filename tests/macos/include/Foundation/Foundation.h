// GNUstep's Foundation, and what the edition uses of Apple's beyond it.
#pragma once

#include_next <Foundation/Foundation.h>

@interface NSTimer (Apple)
- (NSTimeInterval)tolerance;
- (void)setTolerance:(NSTimeInterval)tolerance;
@end
