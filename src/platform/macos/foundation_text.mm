#include "platform/macos/foundation_text.h"

#include "text/unicode.h"

namespace platform {
namespace {

NSString* decoded(std::string_view bytes) {
  return [[[NSString alloc] initWithBytes:bytes.data()
                                   length:bytes.size()
                                 encoding:NSUTF8StringEncoding] autorelease];
}

}  // namespace

NSString* nsString(std::string_view text) {
  return text::isUtf8(text) ? decoded(text) : decoded(text::repairedUtf8(text));
}

std::string utf8String(NSString* text) {
  NSData* bytes = [text dataUsingEncoding:NSUTF8StringEncoding];
  return bytes == nil ? std::string()
                      : std::string(static_cast<const char*>([bytes bytes]), [bytes length]);
}

}  // namespace platform
