// What is made of tray hosts that lose the icon, list none, or are none. Their own times are long:
// here the watch runs within the test, on a real bus, ten times as fast.
#include "frontends/qt/bus/tray_host_watch.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <chrono>
#include <memory>

#include "frontends/qt/desktop/tray_host.h"
#include "tools/background_program.h"
#include "tools/temp_folder.h"

namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr TrayHostTimes kTimes{
    .betweenLooks = 10, .patience = 300, .firstPause = 25, .longestPause = 3000};

/// The timers' event loop.
void ensureApplication() {
  static int count = 0;
  static const QCoreApplication application(count, nullptr);
}

class WatchedHosts : public testing::Test {
 protected:
  void SetUp() override {
    if (!bus_.started()) GTEST_SKIP() << "dbus-daemon is not installed";
    ensureApplication();
    address_ = bus_.firstLine();
    host_ = std::make_unique<TrayHost>(address_);
    host_->appear();
    icons_ = connectedBus(address_);
  }

  /// Until the icon is registered for the first time.
  void startWatching(const TrayHostTimes& times = kTimes) {
    watch_ = std::make_unique<TrayHostWatch>(icons_.get(), times);
    ASSERT_TRUE(eventually([this] { return !host_->icon().empty(); }));
    ASSERT_TRUE(eventually([this] { return watch_->decided(); }));
  }
  bool eventually(const std::function<bool()>& done) {
    return host_->eventually(
        [&] {
          while (sd_bus_process(icons_.get(), nullptr) > 0) {
          }
          QCoreApplication::processEvents();
          return done();
        },
        std::chrono::milliseconds(1));
  }
  void pumpFor(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    eventually([end] { return std::chrono::steady_clock::now() >= end; });
  }

  TempFolder folder_;
  BackgroundProgram bus_{{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                          "--print-address=1",
                          "--address=unix:path=" + (folder_ / "bus").string()}};
  std::string address_;
  std::unique_ptr<TrayHost> host_;
  BusPtr icons_;
  std::unique_ptr<TrayHostWatch> watch_;
};

TEST_F(WatchedHosts, HaveTheirTimesInTheProgram) {
  const TrayHostTimes usual;
  EXPECT_EQ(usual.betweenLooks, 100);
  EXPECT_EQ(usual.patience, 3000);
  EXPECT_EQ(usual.firstPause, 250);
  EXPECT_EQ(usual.longestPause, 30000);
}

TEST_F(WatchedHosts, ThatDropTheIconGetItAgain) {
  TrayHostTimes patient = kTimes;
  patient.patience = 60000;
  startWatching(patient);
  for (int times = 1; times <= 3; ++times) {
    host_->dropIcon();
    ASSERT_TRUE(eventually([&] { return host_->registrations() > times; }));
    EXPECT_TRUE(watch_->hostShowsIcon());
  }
}

TEST_F(WatchedHosts, ThatListNoIconShowNoneUntilTheyDo) {
  host_->setList(TrayHost::List::empty);
  startWatching();
  EXPECT_TRUE(watch_->hostShowsIcon()) << "it may take its time";
  EXPECT_TRUE(eventually([this] { return !watch_->hostShowsIcon(); }));
  host_->setList(TrayHost::List::kept);
  EXPECT_TRUE(eventually([this] { return watch_->hostShowsIcon(); }));
}

TEST_F(WatchedHosts, ThatListNoIconAreAskedMoreAndMoreRarely) {
  host_->setList(TrayHost::List::empty);
  const auto begin = std::chrono::steady_clock::now();
  startWatching();
  ASSERT_TRUE(eventually([this] { return host_->registrations() >= 4; }));
  const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - begin;
  // At once, and 25, 75, 175, 375, 775 … milliseconds later; a busy machine does it later still.
  int most = 1;
  for (double next = kTimes.firstPause, pause = next; next <= passed.count(); next += pause) {
    ++most;
    pause *= 2;
  }
  EXPECT_LE(host_->registrations(), most) << passed.count() << " ms";
}

TEST_F(WatchedHosts, WithoutAListAreBelieved) {
  host_->setList(TrayHost::List::forbidden);
  startWatching();
  pumpFor(std::chrono::milliseconds(400));
  EXPECT_EQ(host_->registrations(), 1);
  EXPECT_TRUE(watch_->hostShowsIcon());
}

TEST_F(WatchedHosts, ThatDieBesideTheirWatcherShowNoIcon) {
  BusPtr panel = connectedBus(address_);
  ASSERT_GE(sd_bus_request_name(panel.get(), "org.kde.StatusNotifierHost-1-1", 0), 0);
  startWatching();
  ASSERT_TRUE(eventually([this] { return watch_->hostShowsIcon(); }));
  ASSERT_TRUE(eventually([this] { return host_->looks() == 2; }));

  panel.reset();
  EXPECT_TRUE(eventually([this] { return !watch_->hostShowsIcon(); }));
  panel = connectedBus(address_);
  ASSERT_GE(sd_bus_request_name(panel.get(), "org.kde.StatusNotifierHost-2-1", 0), 0);
  EXPECT_TRUE(eventually([this] { return watch_->hostShowsIcon(); }));
  EXPECT_EQ(host_->registrations(), 1) << "the watcher has kept it";
}

TEST_F(WatchedHosts, ThatAreNotThereBesidePlasmasWatcherShowNoIcon) {
  host_->takeName("org.kde.kded5");
  watch_ = std::make_unique<TrayHostWatch>(icons_.get(), kTimes);
  ASSERT_TRUE(eventually([this] { return watch_->decided(); }));
  EXPECT_FALSE(watch_->hostShowsIcon());
  EXPECT_EQ(host_->registrations(), 0);

  BusPtr panel = connectedBus(address_);
  ASSERT_GE(sd_bus_request_name(panel.get(), "org.kde.StatusNotifierHost-1-1", 0), 0);
  EXPECT_TRUE(eventually([this] { return watch_->hostShowsIcon(); }));
}

TEST_F(WatchedHosts, NeedNoNamesWherePlasmasServiceIsNoWatcher) {
  const BusPtr service = connectedBus(address_);
  ASSERT_GE(sd_bus_request_name(service.get(), "org.kde.kded5", 0), 0);
  startWatching();
  EXPECT_TRUE(eventually([this] { return watch_->hostShowsIcon(); }));
}

TEST_F(WatchedHosts, CountWhileOneOfThemIsThere) {
  BusPtr first = connectedBus(address_);
  const BusPtr second = connectedBus(address_);
  ASSERT_GE(sd_bus_request_name(first.get(), "org.kde.StatusNotifierHost-1-1", 0), 0);
  ASSERT_GE(sd_bus_request_name(second.get(), "org.kde.StatusNotifierHost-2-1", 0), 0);
  startWatching();
  ASSERT_TRUE(eventually([this] { return host_->looks() == 2; }));
  first.reset();
  EXPECT_TRUE(eventually([this] { return host_->looks() == 3; }));
  pumpFor(std::chrono::milliseconds(100));
  EXPECT_TRUE(watch_->hostShowsIcon());
}

TEST_F(WatchedHosts, AreNotSpokenForByStrangers) {
  startWatching();
  // Once at first, and once when the icon's time to appear is over.
  ASSERT_TRUE(eventually([this] { return host_->looks() == 2; }));
  sendForgedSignal(address_, host_->icon(), "/org/freedesktop/DBus", "org.freedesktop.DBus",
                   "NameOwnerChanged", {kWatcher, ":1.1", ""});
  for (const char* member : {"StatusNotifierHostUnregistered", "StatusNotifierItemUnregistered"}) {
    sendForgedSignal(address_, host_->icon(), kWatcherPath, kWatcher, member, {host_->icon()});
  }
  pumpFor(std::chrono::milliseconds(200));
  EXPECT_TRUE(watch_->hostShowsIcon());
  EXPECT_EQ(host_->looks(), 2);
  EXPECT_EQ(host_->registrations(), 1);
}

}  // namespace
