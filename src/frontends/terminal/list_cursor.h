#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "ui/menu.h"

namespace terminal {

using Items = std::span<const MenuItem>;

/// Which of a list's items is selected, and which part of the list is in view. `height` is
/// how many rows the view has.
class ListCursor {
 public:
  std::optional<std::size_t> selected() const { return selected_; }
  /// While nothing is selected, the next key starts from just before this item.
  std::size_t restingBefore() const { return restingBefore_; }
  std::size_t top() const { return top_; }  ///< the first item in view

  void select(Items items, std::size_t index, int height);
  /// The selected item is at another index now. If it was in view, it is kept in view.
  void follow(Items items, std::size_t index, int height);
  /// Selects the item at this index or, if that can't be selected, the nearest that can; of two
  /// equally near ones the upper.
  void selectNearest(Items items, std::size_t index, int height);

  /// Selects nothing for now. The next Down selects this item, the next Up the one before it.
  void restBefore(Items items, std::size_t index, int height);

  /// To the next selectable item, or the one before.
  void moveDown(Items items, int height);
  void moveUp(Items items, int height);
  /// By the height of the view.
  void pageDown(Items items, int height);
  void pageUp(Items items, int height);
  void home(Items items, int height);
  void end(Items items, int height);

  /// Moves the view alone, at most to the ends of the list.
  void scroll(Items items, int rows, int height);
  /// Brings the view back within the list, after the list or the height has changed.
  void clamp(Items items, int height);
  /// Brings the selection into view, with the heading above it where there is room.
  void reveal(Items items, int height);

 private:
  std::optional<std::size_t> selected_;
  std::size_t restingBefore_ = 0;
  std::size_t top_ = 0;
};

}  // namespace terminal
