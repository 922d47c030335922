#pragma once

#include <functional>
#include <set>
#include <string>

#include "ui/row_order.h"

/// How a front end wants the menu to be arranged. By default each section is cut, and shows its
/// largest rows.
struct MenuArrangement {
  SortBy sortBy = SortBy::memory;
  bool isWhole = false;  ///< no section is cut
  /// In each section one row stands for all of a family, which counts as one where it is cut.
  bool foldsFamilies = false;
  /// The headings of the sections that are not cut, in any order.
  std::set<std::string, std::less<>> wholeSections;
};
