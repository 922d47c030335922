#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>

#include "platform/linux/gpu_reader.h"
#include "scratch_folder.h"

namespace bench {

/// Two graphics cards of which the processes hold memory: folders in the place of /sys and of
/// /proc, which the program reads as it reads the real ones as long as this object lives.
class FakeCards {
 public:
  explicit FakeCards(std::span<const std::int32_t> holders);
  ~FakeCards();
  FakeCards(const FakeCards&) = delete;
  FakeCards& operator=(const FakeCards&) = delete;

  /// The time from one refresh to the next has passed: cards are asked at every second one.
  void nextRefresh() { now_ += std::chrono::seconds(5); }

 private:
  ScratchFolder folder_;
  platform::FileTree sys_;
  platform::ProcFs proc_;
  platform::GpuReader::Clock::time_point now_ = platform::GpuReader::Clock::now();
  std::unique_ptr<platform::GpuReader> reader_;
};

}  // namespace bench
