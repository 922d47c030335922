#pragma once

#include "ui/front_end.h"

/// Keeps track of which menu is open, and reports to the delegate. For the delegate there is only
/// one menu, though two toolkits may show it; when one opens, the other counts as closed.
class MenuTracking {
 public:
  enum class Shown { none, popup, hostMenu };

  void reportTo(MenuDelegate* delegate) { delegate_ = delegate; }

  /// A menu is about to open. Brings its items up to date.
  void begin(Shown menu);

  /// That menu has closed. Does nothing if it was not open.
  void end(Shown menu);

 private:
  MenuDelegate* delegate_ = nullptr;
  Shown shown_ = Shown::none;
};
