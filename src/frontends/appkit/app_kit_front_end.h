#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <string>

#include "frontends/appkit/menu_target.h"
#include "ui/front_end.h"

class StatusBarController;

/// The program's item in the menu bar, with the menu that opens below it. A status bar that has
/// no room gives an item without a button: then title and tooltip are not shown.
class AppKitFrontEnd : public FrontEnd, private MenuEvents {
 public:
  AppKitFrontEnd();
  ~AppKitFrontEnd() override;
  AppKitFrontEnd(const AppKitFrontEnd&) = delete;
  AppKitFrontEnd& operator=(const AppKitFrontEnd&) = delete;

  /// Whom to report to from now on; nullptr for nobody. The controller must be told off before
  /// it goes.
  void reportTo(StatusBarController* controller);

  void setTitle(const std::string& title) override;
  void setToolTip(const std::string& toolTip) override;
  void menuRebuilt(const Menu& menu) override;
  void stripChanged(const MemoryPressureView& strip) override;
  void setNotice(const std::string&) override {}  // the submenu says it, too
  void cancelTracking() override;
  int runModal(const Alert& alert) override;
  std::shared_ptr<ScheduledWork> every(double seconds, std::function<void()> work) override;
  std::shared_ptr<ScheduledWork> after(double seconds, std::function<void()> work) override;
  void terminate() override;

 private:
  void needsUpdate() override;
  void willOpen() override;
  void didClose() override;
  void chosen(const MenuItem& item) override;

  void fill(const Menu& menu);

  NSStatusItem* statusItem_;
  NSMenu* rootMenu_;
  VordaMenuTarget* target_;
  StatusBarController* controller_ = nullptr;
  bool closing_ = false;  ///< the close of the menu is being reported
  std::shared_ptr<ScheduledWork> pendingFill_;
};
