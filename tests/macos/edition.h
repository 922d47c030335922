#pragma once

#import <AppKit/AppKit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "app/app_delegate_macos.h"
#include "app/vorda_app_macos.h"
#include "macos/appkit/user.h"
#include "macos/mac_test.h"

/// The whole edition, on a Mac with a few processes: started as there, used as a user uses it.
class Edition : public MacTest {
 protected:
  Edition() {
    [[NSApplication sharedApplication] setMainMenu:nil];
    darwin::kernel().pages.wire_count = 1 << 18;  // 4 GiB of 16
    darwin::kernel().processes = {
        darwin::process(101, {"/opt/homebrew/bin/ollama", "serve"}, 2048),
        darwin::process(102, {"/Applications/Safari.app/Contents/MacOS/Safari"}, 600),
        {.pid = 103, .effectiveUid = 0, .path = "/usr/local/bin/ollama", .footprint = {}},
        darwin::process(104, {"/usr/bin/small"}, 5),
    };
  }

  void TearDown() override {
    MacTest::TearDown();
    for (const appkit::ShownAlert& alert : appkit::record().alerts) {
      EXPECT_FALSE(alert.menuFaded) << alert.messageText;
    }
  }

  /// Starts the program, does this, and ends the program.
  static void whileRunning(const std::function<void()>& work) {
    bool hasRun = false;
    appkit::record().whileRunning = [&] {
      work();
      hasRun = true;
    };
    EXPECT_EQ(VordaApp::main(), 0);
    EXPECT_TRUE(hasRun) << "the application was never run";
  }

  static AppDelegate* delegate() {
    return static_cast<AppDelegate*>([[NSApplication sharedApplication] delegate]);
  }
  static NSMenu* menu() { return [appkit::statusItem() menu]; }
  static NSMenu* submenuOf(const std::string& row) {
    return [appkit::itemTitled(menu(), row) submenu];
  }

  /// What a user does to choose a command.
  static void chooseInSubmenu(const std::string& row, const std::string& command) {
    pickInSubmenu(row, command);
    appkit::turnRunLoop();
  }
  /// The same up to the moment when the menu fades.
  static void pickInSubmenu(const std::string& row, const std::string& command) {
    appkit::open(menu());
    NSMenuItem* item = appkit::itemTitled(submenuOf(row), command);
    ASSERT_NE(item, nil) << row << " / " << command;
    appkit::sendAction(item);
  }
  static void chooseCommand(const std::string& command) {
    appkit::open(menu());
    NSMenuItem* item = appkit::itemTitled(menu(), command);
    ASSERT_NE(item, nil) << command;
    appkit::choose(item);
  }
  static void writeLaunchAgent(const std::string& label, const std::string& rest) {
    Stage::write(Stage::userLaunchAgentsPath() + "/" + label + ".plist",
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                 "<key>Label</key><string>" +
                     label + "</string>" + rest + "</dict></plist>");
  }
};

inline const std::string kOllamaRow = "★ Ollama Server  ·   2.0 GB";
inline const std::string kSafari = "Safari  ·   600 MB";
