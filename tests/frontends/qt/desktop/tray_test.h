#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "frontends/qt/desktop/desktop.h"
#include "frontends/qt/desktop/tray_host.h"

/// The real program on a desktop of the test's own.
class TrayTest : public testing::Test {
 protected:
  static constexpr const char* kWindow = "Vorda²";  ///< the small window's title
  static constexpr const char* kDialog = "Vorda";   ///< that of alerts
  static constexpr const char* kSettings = "Vorda Settings";
  static constexpr const char* kMenu = "Vorda menu";
  static constexpr const char* kName = "com.halvek.Vorda";

  void SetUp() override {
    if (!desktop.reason().empty()) GTEST_SKIP() << desktop.reason();
    host = std::make_unique<TrayHost>(desktop.busAddress());
  }

  /// Starts the program beside a tray host, and waits for its icon.
  void startInTray() {
    host->appear();
    program = desktop.startProgram();
    ASSERT_TRUE(host->eventually([this] { return !host->icon().empty(); }));
  }

  /// Starts the program where there is no tray.
  void startWithoutTray() {
    program = desktop.startProgram();
    ASSERT_TRUE(windowAppears(kWindow));
  }

  bool windowAppears(const char* title) {
    return host->eventually([this, title] { return desktop.showsWindow(title); });
  }
  bool windowGoes(const char* title) {
    return host->eventually([this, title] { return !desktop.showsWindow(title); });
  }

  /// Chooses an item of the menu as a host does that never says that it opens the menu.
  void choose(const std::string& label) {
    const HostItem menu = host->layout();
    const HostItem* item = findItem(menu, label);
    ASSERT_NE(item, nullptr) << label;
    host->click(*item);
  }

  /// The same in the submenu of a process.
  void chooseOfProcess(int pid, const std::string& beginning) {
    const auto row = host->processRow(pid);
    ASSERT_TRUE(row) << pid;
    for (const HostItem& item : row->children) {
      if (item.label.starts_with(beginning)) return host->click(item);
    }
    FAIL() << beginning;
  }

  bool rowAppears(int pid) {
    return host->eventually([this, pid] { return host->processRow(pid).has_value(); });
  }
  bool rowGoes(int pid) {
    return host->eventually([this, pid] { return !host->processRow(pid).has_value(); });
  }

  Desktop desktop;
  std::unique_ptr<TrayHost> host;
  std::unique_ptr<BackgroundProgram> program;
};
