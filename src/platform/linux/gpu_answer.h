#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/gpus.h"

namespace platform {

// What vorda-gpu, which asks NVIDIA's driver, is asked and says: lines of text.
//
//   ask                               how much memory is where?
//   ask once                          the same, and let go of the driver after the answer
//
//   card 0000:65:00.0 85899345920 41016098816 NVIDIA H100 80GB HBM3
//   card 0000:66:00.0 - - Orin        one without memory of its own
//   use 0 4711 38754320384            place of the card, pid, bytes
//   end
//
//   error 9                           no answer: the driver's error number, -1 for none
//   end

inline constexpr std::string_view kAskAndStay = "ask\n";
inline constexpr std::string_view kAskOnce = "ask once\n";
inline constexpr std::string_view kLastLine = "end\n";
inline constexpr std::size_t kLongestGpuAnswer = 1 << 20;  ///< in bytes
inline constexpr std::size_t kMostGpuCards = 256;

/// One answer. In it `devices` are in the driver's order, and a card that shares the machine's
/// memory has no capacity; GpuUse::askedAt is 0.
struct GpuAnswer {
  std::optional<int> error;  ///< why there is none
  std::vector<GpuDevice> devices;
  std::vector<GpuUse> uses;
};

/// One line of an answer, with its end. A name's line breaks become blanks.
///@{
std::string cardLine(const GpuDevice& card);
std::string useLine(const GpuUse& use);
std::string errorLine(int error);
///@}

/// A whole answer, its last line included; none when it is not one, however little is wrong.
/// Uses of no bytes, of all ones (which is how the driver says "unknown"), of pids that no
/// process can have or of cards that are not there are left out.
std::optional<GpuAnswer> parseGpuAnswer(std::string_view text);

}  // namespace platform
