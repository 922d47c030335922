#pragma once

#include <functional>
#include <set>
#include <string>

/// What the rows of a section are sorted by, before it is cut; equals by memory.
enum class SortBy {
  memory,  ///< the largest first
  gpu,     ///< what holds most of graphics cards' memory first
  name,    ///< in the order of the alphabet, whatever the case of ASCII letters
  start,   ///< the latest first
};

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
