#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ui/fair_share_inquiry.h"
#include "ui/family_view.h"
#include "ui/menu.h"

/// What stands in the rows of a family's members about the family. All of them share the menu of
/// the members.
struct FamilyEntries {
  std::string toolTip;                     ///< a line for the tooltip
  std::vector<MenuItem> items;             ///< for the submenu
  std::shared_ptr<const MenuItem> folded;  ///< MenuItem::folded
};

/// Makes them, for each family once and only when a row of it is made.
class FamilyItems {
 public:
  /// Makes a process's row; `entries`: those of its family, nullptr for none.
  using MakeRow =
      std::function<MenuItem(const VordaProcess& process, const FamilyEntries* entries)>;

  /// `families` outlives it.
  FamilyItems(const FamilyViews& families, MakeRow makeRow)
      : families_(families), makeRow_(std::move(makeRow)) {}

  /// The entries of the process's family; nullptr when it has none.
  const FamilyEntries* of(const VordaProcess& process);

 private:
  FamilyEntries entriesOf(const FamilyView& family) const;

  const FamilyViews& families_;
  MakeRow makeRow_;
  std::map<std::int32_t, FamilyEntries> made_;  ///< by the head's pid
};

/// The menu with families folded: in each section the row that stands for a family
/// (MenuItem::folded) takes the place of its first member; the other members' rows are left out.
Menu foldedMenu(const Menu& menu);

/// The line about a family's memory, once it is known how much its members really hold. It stays as
/// it is where that is not known of each.
void setFairShares(LiveTitle& live, const FairShareInquiry::Shares& shares);

/// "Left behind: pid 812, which started it, has ended"; "" for a process that was not.
std::string leftBehindLine(const VordaProcess& process);
