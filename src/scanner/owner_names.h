#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/processes.h"

namespace ProcessScanner {

/// Reads one process after the other into the same buffers. What costs extra (memory, the
/// owner's name) is asked for only when it is wanted: most processes are never shown.
class ProcessSampler {
 public:
  /// Looks at the process, and leaves its command line unread. False when it is gone.
  bool look(std::int32_t pid);
  /// Reads the command line of the process that was looked at last. False when no name can be
  /// found: there is nothing to show.
  bool read() { return platform::readCommandLine(facts_); }
  /// To be told at each scan. The owners' names are asked for anew once a minute of refreshes: that
  /// they are given to others is rare, and finding them may take a directory service.
  void beginScan();

  // Once it was looked at:

  /// platform::ProcessFacts::fingerprint.
  std::optional<platform::Fingerprint> fingerprint() const { return facts_.fingerprint; }
  /// None when unknown.
  std::optional<std::int32_t> parent() const { return facts_.parent; }
  /// None when unknown.
  std::optional<std::int32_t> session() const { return facts_.session; }
  /// platform::ProcessFacts::startTime.
  std::optional<std::uint64_t> startTime() const { return facts_.startTime; }
  /// 0 when unknown: such a process counts as the superuser's.
  std::uint32_t uid() const { return facts_.effectiveUid.value_or(0); }
  /// In MiB; 0 when unreadable.
  double physicalFootprintMB() const;
  /// The owner's login name, or "uid " and the number; looked up once per user.
  const std::string& ownerName();

  // Once its command line was read:

  /// The last path component of the first argument, else of the executable; never empty.
  std::string_view name() const { return facts_.name; }
  /// No argument is empty.
  std::span<const std::string_view> arguments() const { return facts_.arguments; }
  /// The arguments joined by single spaces; secrets are still in it.
  std::string_view commandLine() const { return facts_.commandLine; }
  /// Whether there are more arguments than that.
  bool isCut() const { return facts_.isCut; }
  /// platform::ProcessFacts::executable.
  std::optional<platform::Fingerprint> executable() const { return facts_.executable; }
  /// platform::ProcessFacts::title.
  std::string_view title() const { return facts_.title; }

  /// Asked last: whether all that was asked since look() is true of one process. When not,
  /// another has its pid by now, or nobody.
  bool confirm() { return platform::confirmProcess(pid_, facts_); }
  /// Of the confirmed process; none when it can't be told.
  std::optional<std::uint64_t> identity() const { return facts_.identity; }

 private:
  std::int32_t pid_ = 0;
  platform::ProcessFacts facts_;
  std::vector<std::pair<std::uint32_t, std::string>> ownerNames_;  ///< few
  int scansWithNames_ = 0;
};

}  // namespace ProcessScanner
