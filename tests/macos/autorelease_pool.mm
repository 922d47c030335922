#include "macos/autorelease_pool.h"

#import <Foundation/Foundation.h>

AutoreleasePool::AutoreleasePool() : pool_([[NSAutoreleasePool alloc] init]) {}

AutoreleasePool::~AutoreleasePool() {
  [static_cast<NSAutoreleasePool*>(pool_) release];
}
