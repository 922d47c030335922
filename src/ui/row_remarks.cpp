#include "ui/row_remarks.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "platform/processes.h"
#include "ui/strip_text.h"

namespace {

std::string_view nameIn(const MenuItem& row) {
  return std::string_view(row.title).substr(row.name.begin, row.name.end - row.name.begin);
}

/// Whether a row of another process has the same name.
bool hasNamesake(const MenuItem& row, std::span<const MenuItem> rows) {
  return row.name.begin < row.name.end && std::ranges::any_of(rows, [&row](const auto& one) {
           return one.process && one.process->pid != row.process->pid && nameIn(one) == nameIn(row);
         });
}

}  // namespace

std::string rowTag(const MenuItem& row, std::span<const MenuItem> rows,
                   const MemoryPressureView* strip) {
  std::string tag;
  if (row.process) {
    const std::int32_t pid = row.process->pid;
    if (hasNamesake(row, rows)) tag = "  pid " + std::to_string(pid);
    if (strip != nullptr) tag += segmentTag(*strip, pid);
  }
  return tag + (row.isLeftBehind ? "  left behind" : "");
}

std::string runningTime(const MenuItem& row) {
  constexpr std::uint64_t kNanosecondsPerMinute = 60'000'000'000;
  constexpr std::uint64_t kDay = 1'440;  // in minutes
  const VordaProcess* const process = processOf(row);
  const std::uint64_t now = platform::processClock();
  if (process == nullptr || !process->startTime || *process->startTime > now) return {};
  const std::uint64_t minutes = (now - *process->startTime) / kNanosecondsPerMinute;
  const auto part = [](std::uint64_t count, const char* unit) {
    return std::to_string(count) + unit;
  };
  if (minutes < 60) return "for " + part(minutes, " min");
  if (minutes < kDay) return "for " + part(minutes / 60, " h ") + part(minutes % 60, " min");
  return "for " + part(minutes / kDay, " d ") + part(minutes / 60 % 24, " h");
}
