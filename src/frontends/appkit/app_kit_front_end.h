#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <string>

#include "frontends/appkit/menu_target.h"
#include "ui/front_end.h"

/// The program's item in the menu bar, with the menu that opens below it. When the status bar has
/// no room, its item has no button: then title and tooltip are not shown.
class AppKitFrontEnd : public FrontEnd {
 public:
  AppKitFrontEnd();
  ~AppKitFrontEnd() override;
  AppKitFrontEnd(const AppKitFrontEnd&) = delete;
  AppKitFrontEnd& operator=(const AppKitFrontEnd&) = delete;

  /// Sets the delegate that is told of the menu from now on; nullptr for none. Has to be set to
  /// nullptr before the delegate is destroyed.
  void reportTo(MenuDelegate* delegate);

  void setTitle(const std::string& title) override;
  void setToolTip(const std::string& toolTip) override;
  void menuRebuilt(std::shared_ptr<const Menu> menu) override;
  void stripChanged(const MemoryPressureView& strip) override;
  void setNotice(const std::string&) override {}                    // the submenu says it as well
  void setWarning(const std::optional<MemoryWarning>&) override {}  // a Mac warns by itself
  void cancelTracking() override;
  int runModal(const Alert& alert) override;
  std::shared_ptr<ScheduledWork> every(double seconds, std::function<void()> work) override;
  std::shared_ptr<ScheduledWork> after(double seconds, std::function<void()> work) override;
  void terminate() override;

 private:
  void fill(const Menu& menu);

  NSStatusItem* statusItem_;
  NSMenu* rootMenu_;
  VordaMenuTarget* target_;
  std::shared_ptr<ScheduledWork> pendingFill_;
};
