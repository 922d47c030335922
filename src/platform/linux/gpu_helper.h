#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/file_reader.h"
#include "platform/linux/gpu_answer.h"

namespace platform {

/// Asks NVIDIA's driver through vorda-gpu, a process of our own: the driver's library may wait for
/// ever, and crash. Nothing here waits but await(). The process is started by the first question,
/// ends with this one however that ends, and is never left as a zombie longer than until the next
/// call. For one thread, which has to live as long as the process is wanted.
class GpuHelper {
 public:
  using Clock = std::chrono::steady_clock;

  struct Options {
    std::string program;                       ///< the path of vorda-gpu
    std::chrono::milliseconds patience{2000};  ///< for one answer
    std::chrono::seconds rest{60};             ///< when there was none: the driver is left alone
  };
  explicit GpuHelper(Options options) : options_(std::move(options)) {}
  ~GpuHelper() { end(); }
  GpuHelper(const GpuHelper&) = delete;
  GpuHelper& operator=(const GpuHelper&) = delete;

  /// Asks the driver, whose library is `library`, unless an answer is still waited for or the
  /// driver is left alone. `once`: does not hold on to the driver afterwards.
  void ask(const std::string& library, bool once);

  struct Heard {
    GpuAnswer answer;
    std::uint64_t askedAt = 0;  ///< on processClock()
  };
  /// The answer, when it has come since. An error is an answer; after one, too, the driver is left
  /// alone for a while.
  std::optional<Heard> hear();

  /// Waits until there is something to hear, or to give up on.
  void await() const;

  /// Ends the process; no answer is waited for any more.
  void end();

  /// Whether an answer is waited for.
  bool isAsked() const { return deadline_.has_value(); }

 private:
  bool start(const std::string& library);
  bool receive();
  void giveUp();
  void reap();

  Options options_;
  FileDescriptor socket_;
  FileDescriptor pidfd_;
  std::vector<pid_t> children_;  ///< not reaped yet; the one that is asked is the last
  std::string received_;
  std::optional<Clock::time_point> deadline_;  ///< of the answer that is waited for
  std::uint64_t askedAt_ = 0;
  Clock::time_point restsUntil_;
};

}  // namespace platform
