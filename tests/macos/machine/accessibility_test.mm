// The whole program on a real Mac, used from outside as assistive technology uses it.
#import <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <string>

#include "macos/machine/sleeper.h"
#include "tools/eventually.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): a Mac's headers lack it

namespace {

using testing::HasSubstr;

bool becomesSo(const std::function<bool()>& probe) {
  return eventually(probe, std::chrono::milliseconds(100));
}

// Elements of accessibility are objects of CoreFoundation, and so of Objective-C.

AXUIElementRef elementOf(id object) {
  return (AXUIElementRef)object;
}

/// nil where the element has no such attribute, or is gone.
id attributeOf(id element, NSString* name) {
  CFTypeRef value = nullptr;
  if (element == nil || AXUIElementCopyAttributeValue(elementOf(element), (CFStringRef)name,
                                                      &value) != kAXErrorSuccess) {
    return nil;
  }
  return [(id)value autorelease];
}

std::string textOf(id element, NSString* name) {
  id value = attributeOf(element, name);
  return [value isKindOfClass:[NSString class]] ? [value UTF8String] : "";
}

/// All that a screen reader may say of it.
std::string wordsOf(id element) {
  return textOf(element, @"AXTitle") + "\n" + textOf(element, @"AXDescription") + "\n" +
         textOf(element, @"AXValue");
}

NSArray* childrenOf(id element) {
  return attributeOf(element, @"AXChildren");
}

/// The first element below this one that is so; nil when there is none.
id firstBelow(id element, const std::function<bool(id)>& isIt) {
  for (id child in childrenOf(element)) {
    if (isIt(child)) return child;
    if (id found = firstBelow(child, isIt)) return found;
  }
  return nil;
}

/// What opens a menu or an alert answers when that has closed, so no answer is waited for.
void press(id element) {
  AXUIElementPerformAction(elementOf(element), (CFStringRef) @"AXPress");
}

class Accessibility : public testing::Test {
 protected:
  ~Accessibility() override {
    if (program_ > 0) {
      kill(program_, SIGKILL);
      waitpid(program_, nullptr, 0);
    }
    [pool_ release];
  }

  void SetUp() override {
    if (!AXIsProcessTrusted()) {
      GTEST_SKIP() << "the system does not let this program use others: System Settings, Privacy "
                      "& Security, Accessibility";
    }
    std::string path = VORDA_PROGRAM;
    char* arguments[] = {path.data(), nullptr};
    ASSERT_EQ(posix_spawn(&program_, path.c_str(), nullptr, nullptr, arguments, environ), 0);
    application = [(id)AXUIElementCreateApplication(program_) autorelease];
    ASSERT_TRUE(becomesSo([this] {
      extra = [childrenOf(attributeOf(application, @"AXExtrasMenuBar")) firstObject];
      return extra != nil;
    })) << "the menu bar has no item of the program's";
  }

  /// Opens the menu of the program's menu bar item.
  void openMenu() {
    press(extra);
    ASSERT_TRUE(becomesSo([this] {
      menu = [childrenOf(extra) firstObject];
      return [childrenOf(menu) count] > 0;
    })) << "no menu opens";
  }

  /// The item of this menu whose title begins like this; nil when there is none.
  static id itemOf(id ofMenu, const std::string& beginning) {
    for (id item in childrenOf(ofMenu)) {
      if (textOf(item, @"AXTitle").starts_with(beginning)) return item;
    }
    return nil;
  }

  /// The submenu of the row of this process: the one that names its pid.
  id submenuOf(pid_t pid) const {
    const std::string ending = " · pid " + std::to_string(pid);
    return firstBelow(menu, [&](id below) {
      for (id item in childrenOf(below)) {
        if (textOf(item, @"AXTitle").ends_with(ending)) return true;
      }
      return false;
    });
  }

  /// The alert that is open and says this, once it is there; nil when none comes.
  id alertThatSays(const std::string& words) const {
    id alert = nil;
    becomesSo([&] {
      for (id window in static_cast<NSArray*>(attributeOf(application, @"AXWindows"))) {
        const auto saysIt = [&](id below) {
          return wordsOf(below).find(words) != std::string::npos;
        };
        if (firstBelow(window, saysIt) != nil) alert = window;
      }
      return alert != nil;
    });
    return alert;
  }

  static id buttonIn(id window, const std::string& title) {
    return firstBelow(window, [&](id below) {
      return textOf(below, @"AXRole") == "AXButton" && textOf(below, @"AXTitle") == title;
    });
  }

  bool programEnds() {
    return becomesSo([this] {
      int status = 0;
      if (waitpid(program_, &status, WNOHANG) != program_) return false;
      program_ = -1;
      return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    });
  }

  id application = nil;
  id extra = nil;
  id menu = nil;

 private:
  NSAutoreleasePool* pool_ = [[NSAutoreleasePool alloc] init];
  pid_t program_ = -1;
};

TEST_F(Accessibility, MenuOpensAndQuitsTheProgram) {
  EXPECT_THAT(wordsOf(extra), HasSubstr("Vorda"));
  openMenu();
  ASSERT_NE(menu, nil);
  for (const char* title : {"Refresh now", "About Vorda", "Quit Vorda"}) {
    EXPECT_NE(itemOf(menu, title), nil) << title;
  }
  EXPECT_NE(wordsOf([childrenOf(menu) firstObject]), "\n\n") << "the strip, in words";
  press(itemOf(menu, "Quit Vorda"));
  EXPECT_TRUE(programEnds());
}

TEST_F(Accessibility, ForceQuitEndsTheChosenProcess) {
  Sleeper sleeper("llama-server");
  ASSERT_GT(sleeper.pid(), 0);
  const std::string pid = std::to_string(sleeper.pid());
  openMenu();
  id submenu = submenuOf(sleeper.pid());
  ASSERT_NE(submenu, nil) << "no row of pid " << pid;
  press(itemOf(submenu, "Force Quit"));
  id alert = alertThatSays("PID " + pid + "\n");
  ASSERT_NE(alert, nil) << "no alert about pid " << pid;
  EXPECT_NE(buttonIn(alert, "Cancel"), nil);
  press(buttonIn(alert, "Force Quit"));
  int signal = 0;
  EXPECT_TRUE(becomesSo([&] { return (signal = sleeper.reapIfEnded()) != 0; }));
  EXPECT_EQ(signal, SIGKILL);
}

}  // namespace
