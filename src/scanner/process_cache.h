#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/processes.h"
#include "scanner/lab_role.h"
#include "scanner/mapped_models.h"
#include "scanner/vorda_process.h"

namespace ProcessScanner {

/// A process's row in the list. It is made once and lent to the list from scan to scan, so that
/// its texts are neither made nor copied again.
class LentRow {
 public:
  /// Whether there is one, and it is not lent.
  bool isHere() const { return row_ != nullptr && row_->pid != kLent; }
  VordaProcess& operator*() { return *row_; }
  VordaProcess* operator->() { return row_.get(); }

  void make(VordaProcess row);
  VordaProcess lend();
  /// Takes a lent row back; ignored if it was dropped meanwhile.
  void takeBack(VordaProcess&& row);
  void drop() { row_.reset(); }

 private:
  static constexpr std::int32_t kLent = 0;

  /// Null: no row. While it is lent, an empty row with the pid kLent.
  std::unique_ptr<VordaProcess> row_;
};

/// For processes whose name may change though their command line does not.
struct OtherName {
  /// Of a launcher that waits: its name while the program that it has started has the role.
  std::string ofLauncher;
  /// recognition::Verdict::blob, while no model's name was found for it.
  std::string blob;
};

/// What was found out about one process. It holds as long as `fingerprint` stays the same, and
/// `executable`, where there is one.
struct CachedProcess {
  std::int32_t pid = 0;
  LabRole role = LabRole::none;
  bool isThere = false;         ///< the scan that is under way has asked for it
  bool isExcluded = false;      ///< its name is one that is never shown
  bool isFamilyBorder = false;  ///< family_borders.h
  /// It is shown beside its family although it is not listed.
  bool isUnlistedMember = false;
  bool isFilled = false;  ///< its row is as it was found in this scan
  /// With another executable it might have another role, or a name that is never shown. If not,
  /// the executable need not be asked while the process is not listed.
  bool dependsOnExecutable = false;
  bool waits = false;  ///< recognition::Verdict::waits, of a process that has a role
  std::optional<platform::Fingerprint> fingerprint;  ///< none: nothing was found out
  // For few, so that the many stay small:
  /// platform::ProcessFacts::executable; null: none.
  std::unique_ptr<platform::Fingerprint> executable;
  std::unique_ptr<MappedFilesRead> mappedFiles;  ///< null: it was not asked
  std::unique_ptr<OtherName> otherName;
  LentRow row;  ///< while it is listed, or an unlisted member

  /// Starts over: nothing was found out.
  void forget() { *this = {.pid = pid, .isThere = isThere}; }
};

/// What is known of the processes that run, from one scan to the next. It knows no more of them
/// than the system lists, and forgets those that are gone.
class ProcessCache {
 public:
  /// Starts a scan. The list of the last one is given back, and left empty.
  void begin(std::vector<VordaProcess>& rows);
  /// Gives back another list, before the scan's first process.
  void giveBack(std::vector<VordaProcess>& rows);

  /// The process with this pid, which the system lists in this scan; once a scan for each pid.
  /// Valid until the next call.
  CachedProcess& of(std::int32_t pid);

  /// Ends the scan: forgets the processes that it did not ask for.
  void end();

  /// The process with this pid, when no scan is under way; null: it is not known.
  CachedProcess* find(std::int32_t pid);

  /// Of how many processes something is known, when no scan is under way.
  std::size_t size() const { return cached_.size(); }

 private:
  std::vector<CachedProcess> cached_;  ///< by pid
  std::vector<CachedProcess> new_;     ///< those that the scan found first
  std::size_t next_ = 0;  ///< where the next pid is, when the system lists them in order
};

}  // namespace ProcessScanner
