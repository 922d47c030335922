#include "platform/macos/process_record.h"

#include <sys/sysctl.h>

#include <iterator>

namespace platform {

std::optional<ProcessRecord> processRecord(std::int32_t pid) {
  constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;
  int name[] = {CTL_KERN, KERN_PROC, KERN_PROC_PID, pid};
  kinfo_proc record = {};
  std::size_t size = sizeof record;
  if (sysctl(name, std::size(name), &record, &size, nullptr, 0) != 0) return std::nullopt;
  const auto& start = record.kp_proc.p_starttime;
  return ProcessRecord{
      .effectiveUid = record.kp_eproc.e_ucred.cr_uid,
      .parent = record.kp_eproc.e_ppid,
      .state = record.kp_proc.p_stat,
      .startTime = static_cast<std::uint64_t>(start.tv_sec) * kMicrosecondsPerSecond +
                   static_cast<std::uint64_t>(start.tv_usec)};
}

}  // namespace platform
