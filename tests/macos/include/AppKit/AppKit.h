// The part of AppKit that the edition sends messages to, declared as Apple declares it.
#pragma once

#import <Foundation/Foundation.h>

@interface NSWorkspace : NSObject
+ (NSWorkspace*)sharedWorkspace;
- (BOOL)openURL:(NSURL*)url;
@end
