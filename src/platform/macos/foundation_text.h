#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace platform {

/// Text for Foundation, autoreleased; never nil. Bytes that are not UTF-8 become U+FFFD.
NSString* nsString(std::string_view text);

/// Foundation's text in UTF-8; "" for nil and for what has no UTF-8 form.
std::string utf8String(NSString* text);

}  // namespace platform
