// The part of the accessibility interface that the tests for a Mac use, declared as Apple declares
// it. Nothing on Linux defines it: those tests are compiled here, not run.
#pragma once

#include <sys/types.h>

#include <cstdint>

extern "C" {

typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __AXUIElement* AXUIElementRef;
typedef unsigned char Boolean;

enum AXError : int32_t { kAXErrorSuccess = 0 };

Boolean AXIsProcessTrusted(void);
AXUIElementRef AXUIElementCreateApplication(pid_t pid);
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef* value);
AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);
}
