#pragma once

#include "frontends/qt/menu_delegate.h"
#include "ui/status_bar_controller.h"

/// Hands what the front end tells on to the controller.
class ControllerDelegate : public MenuDelegate {
 public:
  explicit ControllerDelegate(StatusBarController& controller) : controller_(controller) {}

  void menuNeedsUpdate() override { controller_.menuNeedsUpdate(controller_.rootMenu()); }
  void menuWillOpen() override { controller_.menuWillOpen(controller_.rootMenu()); }
  void menuDidClose() override { controller_.menuDidClose(controller_.rootMenu()); }
  void perform(const MenuItem& item) override { controller_.perform(item); }

 private:
  StatusBarController& controller_;
};
