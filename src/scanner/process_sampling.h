#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/processes.h"

namespace ProcessScanner {

/// Reads one process after the other into the same buffers. What costs extra (memory, the
/// owner's name) is asked for only when it is wanted: most processes are never shown.
class ProcessSampler {
 public:
  /// Reads the process. False when no name can be found: there is nothing to show.
  [[nodiscard]] bool sample(std::int32_t pid);

  /// The last path component of the first argument, else of the executable; never empty.
  std::string_view name() const { return facts_.name; }
  /// No argument is empty.
  std::span<const std::string_view> arguments() const { return facts_.arguments; }
  /// The arguments joined by single spaces; secrets are still in it.
  std::string_view commandLine() const { return facts_.commandLine; }
  /// Whether there are more arguments than that.
  bool isCut() const { return facts_.isCut; }
  /// None when unknown.
  std::optional<std::int32_t> parent() const { return facts_.parent; }
  /// platform::ProcessFacts::startTime.
  std::optional<std::uint64_t> startTime() const { return facts_.startTime; }
  /// To be called last: whether everything that was read since sample() belongs to one process.
  /// When not, its pid is now another's or nobody's.
  [[nodiscard]] bool confirm() { return platform::confirmProcess(pid_, facts_); }
  /// The confirmed process's platform::ProcessFacts::identity; none when it is not known.
  std::optional<std::uint64_t> identity() const { return facts_.identity; }
  /// 0 when unknown, so that such a process counts as root's.
  std::uint32_t uid() const { return facts_.effectiveUid.value_or(0); }
  /// In MiB; 0 when unreadable.
  double physicalFootprintMB() const;
  /// The owner's login name, or "uid " and the number; looked up once per user.
  const std::string& ownerName();

 private:
  std::int32_t pid_ = 0;
  platform::ProcessFacts facts_;
  std::map<std::uint32_t, std::string> ownerNames_;
};

}  // namespace ProcessScanner
