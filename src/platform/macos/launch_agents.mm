#include "platform/macos/launch_agents.h"

#import <Foundation/Foundation.h>
#include <unistd.h>

#include "platform/macos/foundation_text.h"
#include "platform/macos/launch_agent_file.h"
#include "platform/macos/launchctl_attempts.h"
#include "platform/macos/launchctl_inquiry.h"
#include "platform/macos/launchctl_limits.h"
#include "platform/macos/places.h"

namespace platform {
namespace {

void addLaunchAgentFiles(NSString* folder, std::vector<LaunchAgentFile>& files) {
  NSArray* names = [[NSFileManager defaultManager] contentsOfDirectoryAtPath:folder error:NULL];
  for (NSString* name in names) {
    if (![name hasSuffix:@".plist"]) continue;
    auto file = readLaunchAgentFile(utf8String([folder stringByAppendingPathComponent:name]));
    if (file) files.push_back(std::move(*file));
  }
}

/// Where launchd keeps the launch agents of the user's session.
std::string domain() {
  return "gui/" + std::to_string(getuid());
}

LaunchctlInquiry& inquiry() {
  static LaunchctlInquiry theInquiry;
  return theInquiry;
}

/// The same attempts; as soon as launchctl answers one, it is asked for its list again, too.
std::vector<ServiceAttempt> watched(std::vector<ServiceAttempt> attempts) {
  for (ServiceAttempt& attempt : attempts) {
    attempt = [original = std::move(attempt)] {
      auto reply = original();
      if (reply && reply->status >= 0) inquiry().resume();
      return reply;
    };
  }
  return attempts;
}

}  // namespace

std::span<const LaunchAgentFile> launchAgentFiles() {
  @autoreleasepool {
    static std::vector<LaunchAgentFile> files;
    files.clear();
    addLaunchAgentFiles([NSHomeDirectory() stringByAppendingPathComponent:@"Library/LaunchAgents"],
                        files);
    addLaunchAgentFiles(nsString(Places::kMachineLaunchAgents), files);
    return files;
  }
}

const LaunchAgentAnswer* loadedLaunchAgents(std::span<const LaunchAgentFile>) {
  static std::optional<LaunchAgentAnswer> answer;
  answer = inquiry().ask(LaunchctlLimits::kList);
  return answer ? &*answer : nullptr;
}

std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string& path) {
  return stopAttempts(label, path, LaunchctlLimits::kAction);
}

std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string& path,
                                         std::chrono::milliseconds limit) {
  return watched(launchctlAttempts(stopCommands(domain(), label, path), limit));
}

std::vector<ServiceAttempt> startAttempts(const std::string&, const std::string& path) {
  return startAttempts(path, LaunchctlLimits::kAction);
}

std::vector<ServiceAttempt> startAttempts(const std::string& path,
                                          std::chrono::milliseconds limit) {
  return watched(launchctlAttempts(startCommands(domain(), path), limit));
}

}  // namespace platform
