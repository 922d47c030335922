#include "frontends/qt/menu_tracking.h"

void MenuTracking::begin(Shown menu) {
  if (delegate_ == nullptr) return;
  end(shown_);
  delegate_->menuNeedsUpdate();
  shown_ = menu;
  delegate_->menuWillOpen();
}

void MenuTracking::end(Shown menu) {
  if (shown_ == Shown::none || shown_ != menu) return;
  shown_ = Shown::none;
  if (delegate_ != nullptr) delegate_->menuDidClose();
}
