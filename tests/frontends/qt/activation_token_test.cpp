// What a desktop gives with a click on the warning reaches the window that the click opens: on a
// bus of the test's own, with the environment, where Qt looks for it, overheard.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "frontends/qt/desktop/notification_daemon.h"
#include "frontends/qt/event_loop.h"
#include "frontends/qt/menu_examples.h"
#include "frontends/qt/qt_front_end.h"
#include "frontends/qt/recording_delegate.h"
#include "tools/background_program.h"
#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

namespace {

std::vector<std::string>& tokensGiven() {
  static std::vector<std::string> tokens;
  return tokens;
}

}  // namespace

/// The one of the C library, which notes what it is asked.
int setenv(const char* name, const char* value, int replace) noexcept {
  using SetEnv = int (*)(const char*, const char*, int);
  static const auto next = reinterpret_cast<SetEnv>(dlsym(RTLD_NEXT, "setenv"));
  if (std::string(name) == "XDG_ACTIVATION_TOKEN") tokensGiven().emplace_back(value);
  return next(name, value, replace);
}

namespace {

TEST(ActivationToken, OfAClickOnTheWarningIsTheWindowsThatOpens) {
  const TempFolder folder;
  BackgroundProgram busProgram({"dbus-daemon", "--session", "--nofork", "--nopidfile",
                                "--print-address=1",
                                "--address=unix:path=" + (folder / "bus").string()});
  if (!busProgram.started()) GTEST_SKIP() << "dbus-daemon is not installed";
  const std::string address = busProgram.firstLine();
  const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", address.c_str());
  NotificationDaemon daemon(address);

  NamedBus bus{SessionBus::open(std::chrono::minutes(1)), nullptr};
  ASSERT_NE(bus.bus, nullptr);
  bus.name = std::make_unique<InstanceName>(*bus.bus);
  QtFrontEnd frontEnd(std::move(bus), {{"Vorda"}});
  RecordingDelegate delegate;
  frontEnd.menuRebuilt(menuOf(exampleItems()));
  frontEnd.reportTo(&delegate);
  frontEnd.setWarning(MemoryWarning{.title = "Memory is running out", .text = "", .process = {}});
  const auto daemonHears = [&daemon](const std::function<bool()>& done) {
    return eventually([&] {
      daemon.process();
      return done();
    });
  };
  ASSERT_TRUE(daemonHears([&] { return !daemon.shown().empty(); }));
  // The answer has to be heard before a signal about it counts.
  settle();
  tokensGiven().clear();
  ASSERT_TRUE(daemonHears([&] {
    daemon.giveToken(101, "token-4711");
    daemon.act(101, "default");
    return delegate.calls.size() >= 2;
  }));
  ASSERT_FALSE(tokensGiven().empty());
  EXPECT_EQ(tokensGiven().front(), "token-4711");
  EXPECT_EQ(std::getenv("XDG_ACTIVATION_TOKEN"), nullptr) << "programs that it starts get none";
  frontEnd.reportTo(nullptr);
}

}  // namespace
