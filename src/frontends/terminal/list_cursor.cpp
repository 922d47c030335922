#include "frontends/terminal/list_cursor.h"

#include <algorithm>

namespace terminal {
namespace {

std::size_t rowsOf(int height) {
  return static_cast<std::size_t>(std::max(height, 1));
}

/// The first selectable item from `from` on.
std::optional<std::size_t> selectableFrom(Items items, std::size_t from) {
  for (std::size_t i = from; i < items.size(); ++i) {
    if (isSelectable(items[i])) return i;
  }
  return std::nullopt;
}

/// The last selectable item before `end`.
std::optional<std::size_t> selectableBefore(Items items, std::size_t end) {
  for (std::size_t i = std::min(end, items.size()); i-- > 0;) {
    if (isSelectable(items[i])) return i;
  }
  return std::nullopt;
}

}  // namespace

void ListCursor::select(Items items, std::size_t index, int height) {
  selected_ = index;
  reveal(items, height);
}

void ListCursor::follow(Items items, std::size_t index, int height) {
  const bool wasInView = selected_ && *selected_ >= top_ && *selected_ < top_ + rowsOf(height);
  selected_ = index;
  clamp(items, height);
  if (wasInView) reveal(items, height);
}

void ListCursor::selectNearest(Items items, std::size_t index, int height) {
  const auto before = selectableBefore(items, index);
  const auto after = selectableFrom(items, index);
  selected_ = after;
  if (before && (!after || index - *before <= *after - index)) selected_ = before;
  clamp(items, height);
  reveal(items, height);
}

void ListCursor::restBefore(Items items, std::size_t index, int height) {
  selected_.reset();
  restingBefore_ = std::min(index, items.size());
  clamp(items, height);
}

/// When nothing is selected and nothing selectable follows in this direction, the nearest item in
/// the other direction is selected; so in moveUp.
void ListCursor::moveDown(Items items, int height) {
  const auto next = selectableFrom(items, selected_ ? *selected_ + 1 : restingBefore_);
  if (next) selected_ = next;
  if (!selected_) selected_ = selectableBefore(items, restingBefore_);
  reveal(items, height);
}

void ListCursor::moveUp(Items items, int height) {
  const auto next = selectableBefore(items, selected_.value_or(restingBefore_));
  if (next) selected_ = next;
  if (!selected_) selected_ = selectableFrom(items, restingBefore_);
  reveal(items, height);
}

void ListCursor::pageDown(Items items, int height) {
  const std::size_t target =
      selected_.value_or(restingBefore_) + std::max<std::size_t>(rowsOf(height) - 1, 1);
  const auto next = selectableFrom(items, target);
  selected_ = next ? next : selectableBefore(items, items.size());
  reveal(items, height);
}

void ListCursor::pageUp(Items items, int height) {
  const std::size_t step = std::max<std::size_t>(rowsOf(height) - 1, 1);
  const std::size_t current = selected_.value_or(restingBefore_);
  const auto next = current >= step ? selectableBefore(items, current - step + 1) : std::nullopt;
  selected_ = next ? next : selectableFrom(items, 0);
  reveal(items, height);
}

void ListCursor::home(Items items, int height) {
  selected_ = selectableFrom(items, 0);
  top_ = 0;
  reveal(items, height);
}

void ListCursor::end(Items items, int height) {
  selected_ = selectableBefore(items, items.size());
  top_ = items.size();
  clamp(items, height);
  reveal(items, height);
}

void ListCursor::scroll(Items items, int rows, int height) {
  const auto back = static_cast<std::size_t>(std::max(-rows, 0));
  top_ = top_ - std::min(top_, back) + static_cast<std::size_t>(std::max(rows, 0));
  clamp(items, height);
}

void ListCursor::clamp(Items items, int height) {
  const std::size_t rows = rowsOf(height);
  top_ = std::min(top_, items.size() > rows ? items.size() - rows : 0);
}

void ListCursor::reveal(Items items, int height) {
  if (!selected_) return;
  const std::size_t rows = rowsOf(height);
  const std::size_t lastTop = *selected_;
  const std::size_t firstTop = lastTop >= rows - 1 ? lastTop - (rows - 1) : 0;
  const auto before = selectableBefore(items, *selected_);
  const std::size_t heading = before ? *before + 1 : 0;

  top_ = std::max(top_, firstTop);
  top_ = std::min(top_, std::max(heading, firstTop));
  clamp(items, height);
}

}  // namespace terminal
