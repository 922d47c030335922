#include "platform/macos/process_record.h"
#include "platform/processes.h"

namespace platform {

std::optional<std::uint64_t> startTimeOf(const std::optional<ProcessRecord>& record) {
  return record && record->startTime != 0 ? std::optional(record->startTime) : std::nullopt;
}

std::optional<std::uint64_t> processIdentity(std::int32_t pid) {
  return startTimeOf(processRecord(pid));
}

}  // namespace platform
