#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "scanner/vorda_process.h"
#include "ui/fair_share_inquiry.h"
#include "ui/menu.h"

/// The processes of one piece of work, of which there are two at least.
struct ShownFamily {
  std::int32_t head = 0;  ///< the pid of the process that began it, which may be nobody's row
  std::string name;       ///< what the work is called, made safe to show
  /// The head first, where it is in the sample, then the largest first. Points into the sample.
  std::vector<const VordaProcess*> members;
  double memMB = 0;  ///< the sum of their footprints, in MiB: what they share counts for each

  /// The one whose name and colour stand for all: the head, unless another's work is known better.
  const VordaProcess& main() const;
};

/// The families of a sample.
class ShownFamilies {
 public:
  /// `unlisted`, `onlyOnGpus`: the members that are not in `listed`. All outlive it.
  ShownFamilies(std::span<const VordaProcess> listed, std::span<const VordaProcess> unlisted,
                std::span<const VordaProcess> onlyOnGpus);

  /// By the pid of the head, or of the process; nullptr for none.
  ///@{
  const ShownFamily* headedBy(std::int32_t head) const;
  const ShownFamily* of(const VordaProcess& process) const;
  ///@}

  /// All, by the head's pid.
  const std::map<std::int32_t, ShownFamily>& all() const { return families_; }

 private:
  std::map<std::int32_t, ShownFamily> families_;
};

/// The memory, in MiB, of the row that shows the process: its family's if that is folded, else its
/// own. `folded`: the families with one row each; nullptr where each process has its own.
double memoryOfRow(const VordaProcess& process, const ShownFamilies* folded);

/// What each row of a member says about the family. The members' rows share the menu of the
/// members.
struct FamilyEntries {
  std::string toolTip;          ///< a line for the tooltip
  std::vector<MenuItem> items;  ///< for the submenu
};

/// Makes them, for each family once and only when a row of it is made.
class FamilyItems {
 public:
  /// Makes a process's row; `entries`: those of its family, nullptr for none.
  using MakeRow =
      std::function<MenuItem(const VordaProcess& process, const FamilyEntries* entries)>;

  /// `families` outlives it.
  FamilyItems(const ShownFamilies& families, MakeRow makeRow)
      : families_(families), makeRow_(std::move(makeRow)) {}

  /// The entries of the process's family; nullptr when it has none.
  const FamilyEntries* of(const VordaProcess& process);

  /// The row that stands for the whole family of the process; its own row when it has none.
  MenuItem folded(const VordaProcess& process);

 private:
  FamilyEntries entriesOf(const ShownFamily& family) const;

  const ShownFamilies& families_;
  MakeRow makeRow_;
  std::map<std::int32_t, FamilyEntries> made_;  ///< by the head's pid
};

/// The line about a family's memory, once it is known how much its members really hold. It stays as
/// it is where that is not known of each.
void setFairShares(LiveTitle& live, const FairShareInquiry::Shares& shares);

/// "Left behind: pid 812, which started it, has ended"; "" for a process that was not.
std::string leftBehindLine(const VordaProcess& process);
