#pragma once

#include <functional>
#include <set>
#include <string>

#include "ui/row_order.h"

/// How a front end wants the menu to be arranged. As it is by default, sections are cut, to the
/// largest.
struct MenuArrangement {
  SortBy sortBy = SortBy::memory;
  bool isWhole = false;  ///< no section is cut
  /// In each section one row stands for all of a family, which counts as one where it is cut.
  bool foldsFamilies = false;
  /// The headings of those that are not, in any order.
  std::set<std::string, std::less<>> wholeSections;
};
