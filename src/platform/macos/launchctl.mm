#include "platform/macos/launchctl.h"

#import <Foundation/Foundation.h>

#include <csignal>
#include <thread>

#include "platform/macos/foundation_text.h"
#include "platform/macos/places.h"
#include "text/unicode.h"

namespace platform {
namespace {

NSArray* nsArray(const std::vector<std::string>& texts) {
  NSMutableArray* array = [NSMutableArray arrayWithCapacity:texts.size()];
  for (const std::string& text : texts) [array addObject:nsString(text)];
  return array;
}

/// Waits for its end; false at the deadline. -[NSTask waitUntilExit] would run the main run loop,
/// and so the refresh timer in the middle of a refresh.
bool hasEnded(NSTask* task, Clock::time_point deadline) {
  constexpr std::chrono::milliseconds kPause(1);
  while ([task isRunning]) {
    if (Clock::now() >= deadline) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

/// Kills it, unless it has ended (then its pid may belong to another process), and gives
/// Foundation time to notice its end.
void end(NSTask* task) {
  constexpr std::chrono::milliseconds kGrace(500);
  if (![task isRunning]) return;
  kill([task processIdentifier], SIGKILL);
  hasEnded(task, Clock::now() + kGrace);
}

LaunchctlReply run(NSTask* task, int output, Clock::time_point deadline) {
  NSError* error = nil;
  if (![task launchAndReturnError:&error]) return {-1, utf8String([error localizedDescription])};
  const auto text = readToEnd(output, deadline);
  if (!text || !hasEnded(task, deadline)) {
    end(task);
    return {-1, "launchctl did not answer in time"};
  }
  return {[task terminationStatus], text::isUtf8(*text) ? *text : std::string()};
}

}  // namespace

LaunchctlReply runLaunchctl(const std::vector<std::string>& arguments, Capture capture,
                            Clock::time_point deadline) {
  @autoreleasepool {
    NSTask* task = [[[NSTask alloc] init] autorelease];
    NSPipe* pipe = [NSPipe pipe];
    [task setExecutableURL:[NSURL fileURLWithPath:nsString(Places::kLaunchctl)]];
    [task setArguments:nsArray(arguments)];
    [task setStandardError:pipe];
    if (capture == Capture::everything) {
      [task setStandardOutput:pipe];
    } else {
      [task setStandardOutput:[NSFileHandle fileHandleWithNullDevice]];
    }
    return run(task, [[pipe fileHandleForReading] fileDescriptor], deadline);
  }
}

}  // namespace platform
