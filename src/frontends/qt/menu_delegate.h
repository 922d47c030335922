#pragma once

#include "ui/menu.h"

/// Whom the front end tells what happens to its menu: the controller, or a test.
class MenuDelegate {
 public:
  virtual ~MenuDelegate() = default;

  /// The menu is about to open: the last moment to change its items.
  virtual void menuNeedsUpdate() = 0;
  virtual void menuWillOpen() = 0;
  virtual void menuDidClose() = 0;

  /// The user chose this item.
  virtual void perform(const MenuItem& item) = 0;
};
