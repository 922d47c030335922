#include "platform/linux/gpu_answer.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "text/decimal.h"
#include "text/split.h"
#include "text/unicode.h"

namespace platform {
namespace {

std::optional<GpuDevice> cardIn(std::string_view line) {
  constexpr std::size_t kLongestText = 256;
  const std::string_view id = text::takeUntil(' ', line);
  const std::string_view total = text::takeUntil(' ', line);
  const std::string_view used = text::takeUntil(' ', line);
  std::string repairedId = text::repairedUtf8(id);
  if (id.empty() || repairedId.size() > kLongestText) return std::nullopt;
  GpuDevice card{.id = std::move(repairedId),
                 .name = text::repairedUtf8(line.substr(0, kLongestText))};
  if (total == "-" && used == "-") return card;
  const auto totalBytes = text::decimal<std::uint64_t>(total);
  const auto usedBytes = text::decimal<std::uint64_t>(used);
  if (!totalBytes || *totalBytes == 0 || !usedBytes) return std::nullopt;
  card.capacity = {*totalBytes, std::min(*usedBytes, *totalBytes)};
  return card;
}

/// False where the line makes no sense.
bool takeUse(std::string_view line, GpuAnswer& answer) {
  const auto device = text::decimal<std::uint64_t>(text::takeUntil(' ', line));
  const auto pid = text::decimal<std::uint64_t>(text::takeUntil(' ', line));
  const auto bytes = text::decimal<std::uint64_t>(text::takeUntil(' ', line));
  if (!device || !pid || !bytes || !line.empty()) return false;
  const bool isPossible = *device < answer.devices.size() && *pid > 0 &&
                          *pid <= std::numeric_limits<std::int32_t>::max() && *bytes > 0 &&
                          *bytes < std::numeric_limits<std::uint64_t>::max();
  if (isPossible) {
    answer.uses.push_back(
        {static_cast<std::int32_t>(*pid), static_cast<std::size_t>(*device), *bytes, 0});
  }
  return true;
}

bool takeLine(std::string_view line, GpuAnswer& answer) {
  const std::string_view kind = text::takeUntil(' ', line);
  if (kind == "use") return takeUse(line, answer);
  if (kind == "error") return (answer.error = text::decimal<int>(line)).has_value();
  if (kind != "card" || answer.devices.size() == kMostGpuCards) return false;
  auto card = cardIn(line);
  if (!card) return false;
  answer.devices.push_back(std::move(*card));
  return true;
}

}  // namespace

std::string cardLine(const GpuDevice& card) {
  std::string name = card.name;
  std::ranges::replace_if(
      name, [](char c) { return c == '\n' || c == '\r'; }, ' ');
  const std::string figures = card.capacity ? std::to_string(card.capacity->totalBytes) + " " +
                                                  std::to_string(card.capacity->usedBytes)
                                            : "- -";
  return "card " + card.id + " " + figures + " " + name + "\n";
}

std::string useLine(const GpuUse& use) {
  return "use " + std::to_string(use.device) + " " + std::to_string(use.pid) + " " +
         std::to_string(use.bytes) + "\n";
}

std::string errorLine(int error) {
  return "error " + std::to_string(error) + "\n";
}

std::optional<GpuAnswer> parseGpuAnswer(std::string_view text) {
  if (text.size() > kLongestGpuAnswer || !text.ends_with(kLastLine)) return std::nullopt;
  text.remove_suffix(kLastLine.size());
  GpuAnswer answer;
  while (!text.empty()) {
    const auto lineEnd = text.find('\n');
    if (lineEnd == std::string_view::npos || !takeLine(text.substr(0, lineEnd), answer)) {
      return std::nullopt;
    }
    text.remove_prefix(lineEnd + 1);
  }
  return answer;
}

}  // namespace platform
