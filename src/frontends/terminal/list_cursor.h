#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "ui/menu.h"

namespace terminal {

using Items = std::span<const MenuItem>;

/// Separators and grey labels can be looked at, not selected.
bool isSelectable(const MenuItem& item);

/// Which of a list's items is selected, and which part of the list is in view. `height` is
/// how many rows the view has.
class ListCursor {
 public:
  std::optional<std::size_t> selected() const { return selected_; }
  /// Where the next key moves from when nothing is selected: before this item.
  std::size_t restingBefore() const { return restingBefore_; }
  std::size_t top() const { return top_; }  ///< the first item in view

  void select(Items items, std::size_t index, int height);
  /// The selected item stands at another place now: if it was in view it stays in view.
  void follow(Items items, std::size_t index, int height);
  /// Selects what stands at that place, or nearest to it; of two the one above.
  void selectNearest(Items items, std::size_t index, int height);

  /// Selects nothing until the next key moves: Down to this item, Up to the one before it.
  void restBefore(Items items, std::size_t index, int height);

  /// To the next selectable item, or the one before.
  void moveDown(Items items, int height);
  void moveUp(Items items, int height);
  /// A view's height further or back.
  void pageDown(Items items, int height);
  void pageUp(Items items, int height);
  void home(Items items, int height);
  void end(Items items, int height);

  /// Moves the view alone, at most to the ends of the list.
  void scroll(Items items, int rows, int height);
  /// Keeps the view within the list, for a list or height that changed.
  void clamp(Items items, int height);
  /// Brings the selection into view, with the heading above it where there is room.
  void reveal(Items items, int height);

 private:
  std::optional<std::size_t> selected_;
  std::size_t restingBefore_ = 0;
  std::size_t top_ = 0;
};

}  // namespace terminal
