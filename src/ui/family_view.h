#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "scanner/vorda_process.h"

/// The processes of one piece of work, of which there are two at least.
struct FamilyView {
  std::int32_t head = 0;  ///< the pid of the process that began it, which may be nobody's row
  std::string name;       ///< what the work is called, made safe to show
  /// The one that began it first, where it is known, then the largest first. Points into the
  /// sample.
  std::vector<const VordaProcess*> members;
  double memMB = 0;  ///< the sum of their footprints, in MiB: what they share counts for each

  /// The one whose name and colour stand for all: the head, unless another's work is known better.
  const VordaProcess& main() const;
};

/// The families of a sample.
class FamilyViews {
 public:
  /// `unlisted`, `onlyOnGpus`: the members that are not in `listed`. All outlive it.
  FamilyViews(std::span<const VordaProcess> listed, std::span<const VordaProcess> unlisted,
              std::span<const VordaProcess> onlyOnGpus);

  /// By the pid of the head, or of the process; nullptr for none.
  ///@{
  const FamilyView* headedBy(std::int32_t head) const;
  const FamilyView* of(const VordaProcess& process) const;
  ///@}

  /// All, by the head's pid.
  const std::map<std::int32_t, FamilyView>& all() const { return families_; }

 private:
  std::map<std::int32_t, FamilyView> families_;
};
