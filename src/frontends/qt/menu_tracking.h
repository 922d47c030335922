#pragma once

#include "ui/front_end.h"

/// Which of the menus is open, and telling the delegate so: there is one menu for it, which
/// two toolkits may show. Opening one means that the other has closed.
class MenuTracking {
 public:
  enum class Shown { none, popup, hostMenu };

  void reportTo(MenuDelegate* delegate) { delegate_ = delegate; }

  /// A menu is about to open. Its items are up to date afterwards.
  void begin(Shown menu);

  /// That menu has closed. Nothing happens if it was not open.
  void end(Shown menu);

 private:
  MenuDelegate* delegate_ = nullptr;
  Shown shown_ = Shown::none;
};
