#include "platform/macos/launch_agent_file.h"

#import <Foundation/Foundation.h>
#include <sys/stat.h>

#include "platform/macos/foundation_text.h"

namespace platform {
namespace {

/// No folder, no pipe, which could make the program wait, and not too large to read every 5
/// seconds.
bool isSmallFile(const std::string& path) {
  constexpr off_t kMost = 1 << 20;
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= kMost;
}

/// What the file holds; nil when that is no dictionary.
NSDictionary* propertyList(NSString* path) {
  NSData* bytes = [NSData dataWithContentsOfFile:path];
  if (bytes == nil) return nil;
  id list = nil;
  @try {
    list = [NSPropertyListSerialization propertyListWithData:bytes
                                                     options:NSPropertyListImmutable
                                                      format:NULL
                                                       error:NULL];
  } @catch (NSException* exception) {
    return nil;
  }
  return [list isKindOfClass:[NSDictionary class]] ? list : nil;
}

std::string label(NSDictionary* list, NSString* path) {
  id value = [list objectForKey:@"Label"];
  if ([value isKindOfClass:[NSString class]]) return utf8String(value);
  return utf8String([[path lastPathComponent] stringByDeletingPathExtension]);
}

std::vector<std::string> programArguments(NSDictionary* list) {
  id value = [list objectForKey:@"ProgramArguments"];
  if (![value isKindOfClass:[NSArray class]]) return {};
  std::vector<std::string> arguments;
  for (id argument in value) {
    if (![argument isKindOfClass:[NSString class]]) return {};
    arguments.push_back(utf8String(argument));
  }
  return arguments;
}

/// True for a Boolean that is true, or for any dictionary of conditions. Foundation has a class of
/// its own for Booleans: the numbers 0 and 1 are none.
bool keepAlive(NSDictionary* list) {
  id value = [list objectForKey:@"KeepAlive"];
  if ([value isKindOfClass:[[NSNumber numberWithBool:YES] class]]) return [value boolValue];
  return [value isKindOfClass:[NSDictionary class]];
}

}  // namespace

std::optional<LaunchAgentFile> readLaunchAgentFile(const std::string& path) {
  if (!isSmallFile(path)) return std::nullopt;
  @autoreleasepool {
    NSString* name = nsString(path);
    NSDictionary* list = propertyList(name);
    if (list == nil) return std::nullopt;
    return LaunchAgentFile{.label = label(list, name),
                           .path = path,
                           .programArguments = programArguments(list),
                           .keepAlive = keepAlive(list)};
  }
}

}  // namespace platform
