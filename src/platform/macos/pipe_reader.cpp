#include "platform/macos/pipe_reader.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace platform {
namespace {

/// Waits for something to read, or the end of the pipe; false at the deadline.
bool waitForBytes(int descriptor, Clock::time_point deadline) {
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0) return false;
    pollfd entry = {descriptor, POLLIN, 0};
    const int ready = poll(&entry, 1, static_cast<int>(left));
    if (ready > 0) return true;
    if (ready < 0 && errno != EINTR) return false;
  }
}

}  // namespace

std::optional<std::string> readToEnd(int descriptor, Clock::time_point deadline) {
  constexpr std::size_t kChunk = 65536;
  constexpr std::size_t kMost = 64 << 20;
  std::string bytes;
  while (bytes.size() < kMost && waitForBytes(descriptor, deadline)) {
    const std::size_t before = bytes.size();
    bytes.resize(before + kChunk);
    const ssize_t count = read(descriptor, bytes.data() + before, kChunk);
    bytes.resize(before + (count > 0 ? static_cast<std::size_t>(count) : 0));
    if (count == 0) return bytes;
    if (count < 0 && errno != EINTR) break;
  }
  return std::nullopt;
}

}  // namespace platform
