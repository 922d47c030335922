#include "frontends/appkit/represented_object.h"

#include <cstdint>
#include <string>
#include <variant>

#include "platform/macos/foundation_text.h"

/// A whole record as an object.
@interface VordaRecord : NSObject {
 @private
  const RepresentedObject* value_;
}
- (instancetype)initWithValue:(const RepresentedObject&)value;
- (const RepresentedObject&)value;
@end

@implementation VordaRecord

- (instancetype)initWithValue:(const RepresentedObject&)value {
  self = [super init];
  if (self != nil) value_ = new RepresentedObject(value);
  return self;
}

- (void)dealloc {
  delete value_;
  [super dealloc];
}

- (const RepresentedObject&)value {
  return *value_;
}

@end

namespace {

RepresentedObject pidIn(NSNumber* number) {
  const long long value = [number longLongValue];
  const auto pid = static_cast<std::int32_t>(value);
  return pid == value ? RepresentedObject(pid) : RepresentedObject();
}

}  // namespace

id objectOf(const RepresentedObject& value) {
  if (std::holds_alternative<std::monostate>(value)) return nil;
  if (const auto* pid = std::get_if<std::int32_t>(&value)) return [NSNumber numberWithInt:*pid];
  if (const auto* label = std::get_if<std::string>(&value)) return platform::nsString(*label);
  return [[[VordaRecord alloc] initWithValue:value] autorelease];
}

RepresentedObject valueOf(id object) {
  if ([object isKindOfClass:[NSNumber class]]) return pidIn(object);
  if ([object isKindOfClass:[NSString class]]) return platform::utf8String(object);
  if ([object isKindOfClass:[VordaRecord class]]) return [static_cast<VordaRecord*>(object) value];
  return {};
}
