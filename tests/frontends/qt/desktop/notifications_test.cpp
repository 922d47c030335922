// What a desktop is given to show as a notification, and what it tells, on a real bus.
#include "frontends/qt/bus/notifications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "frontends/qt/desktop/notification_daemon.h"
#include "frontends/qt/desktop/tray_host.h"
#include "tools/background_program.h"
#include "tools/eventually.h"
#include "tools/temp_folder.h"

namespace {

using testing::ElementsAre;

TEST(AsMarkup, SaysTheSameInMarkup) {
  EXPECT_EQ(asMarkup("train.py holds 9 GB"), "train.py holds 9 GB");
  EXPECT_EQ(asMarkup("<b>a&amp;\"'</b>"), "&lt;b&gt;a&amp;amp;\"'&lt;/b&gt;");
  EXPECT_EQ(asMarkup(""), "");
}

class ShownNotifications : public testing::Test {
 protected:
  void SetUp() override {
    if (!bus_.started()) GTEST_SKIP() << "dbus-daemon is not installed";
    address_ = bus_.firstLine();
    ours_ = connectedBus(address_);
    daemon_ = std::make_unique<NotificationDaemon>(address_);
    notifications_ = std::make_unique<Notifications>(ours_.get());
    QObject::connect(notifications_.get(), &Notifications::chosen, [this] { ++chosen_; });
  }

  bool eventually(const std::function<bool()>& done) {
    return ::eventually(done, [this] {
      while (sd_bus_process(ours_.get(), nullptr) > 0) {
      }
      daemon_->process();
      sd_bus_wait(ours_.get(), 1000);
    });
  }

  /// Clicks it, and waits until that is heard; so is all that the daemon said before.
  bool clickIsHeard(std::uint32_t id) {
    const int before = chosen_;
    daemon_->act(id, "default");
    return eventually([this, before] { return chosen_ == before + 1; });
  }

  /// As anybody on the bus can; it has reached the bus when this returns.
  void forgeClick(std::uint32_t id) const {
    const BusPtr other = connectedBus(address_);
    const char* own = nullptr;
    sd_bus_get_unique_name(ours_.get(), &own);
    sd_bus_message* raw = nullptr;
    sd_bus_message_new_signal(other.get(), &raw, "/org/freedesktop/Notifications",
                              "org.freedesktop.Notifications", "ActionInvoked");
    const BusMessage forged(raw);
    sd_bus_message_set_destination(raw, own);
    sd_bus_message_append(raw, "us", id, "default");
    EXPECT_GE(sd_bus_send(other.get(), raw, nullptr), 0);
    sd_bus_message* reply = nullptr;
    EXPECT_GE(sd_bus_call_method(other.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                 "org.freedesktop.DBus", "GetId", nullptr, &reply, ""),
              0);
    sd_bus_message_unref(reply);
  }

  TempFolder folder_;
  BackgroundProgram bus_{{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                          "--print-address=1",
                          "--address=unix:path=" + (folder_ / "bus").string()}};
  std::string address_;
  BusPtr ours_;
  std::unique_ptr<NotificationDaemon> daemon_;
  std::unique_ptr<Notifications> notifications_;
  int chosen_ = 0;
};

TEST_F(ShownNotifications, HaveAllThatADesktopNeeds) {
  notifications_->show("Memory is running out", "<a & b>");
  ASSERT_TRUE(eventually([this] { return !daemon_->shown().empty(); }));
  const auto& shown = daemon_->shown().front();
  EXPECT_EQ(shown.program, "Vorda");
  EXPECT_EQ(shown.replaces, 0U);
  EXPECT_EQ(shown.summary, "Memory is running out");
  EXPECT_EQ(shown.body, "&lt;a &amp; b&gt;");
  EXPECT_THAT(shown.actions, ElementsAre("default", "Show"));
  EXPECT_EQ(shown.urgency, 1) << "more would break through \"do not disturb\"";
  EXPECT_EQ(shown.desktopEntry, "vorda");
}

TEST_F(ShownNotifications, TellOfAClickOnThemAndOfNothingElse) {
  notifications_->show("first", "");
  ASSERT_TRUE(eventually([this] { return !daemon_->shown().empty(); }));
  ASSERT_TRUE(clickIsHeard(101));
  daemon_->act(101, "other");
  daemon_->act(102, "default");
  forgeClick(101);
  EXPECT_TRUE(clickIsHeard(101)) << "one, and no more";
}

TEST_F(ShownNotifications, PassOnWhatTheDesktopGivesTheWindowThatAClickOpens) {
  std::vector<QByteArray> tokens;
  QObject::connect(notifications_.get(), &Notifications::tokenProvided,
                   [&tokens](const QByteArray& token) { tokens.push_back(token); });
  notifications_->show("first", "");
  ASSERT_TRUE(eventually([this] { return !daemon_->shown().empty(); }));
  ASSERT_TRUE(clickIsHeard(101)) << "not every desktop has one";
  EXPECT_TRUE(tokens.empty());
  daemon_->giveToken(102, "of-another");
  daemon_->giveToken(101, "with blanks");
  daemon_->giveToken(101, std::string(257, 'x').c_str());
  daemon_->giveToken(101, "");
  daemon_->giveToken(101, "token-4711");
  ASSERT_TRUE(clickIsHeard(101));
  EXPECT_THAT(tokens, ElementsAre("token-4711")) << "by the time of the click";
}

TEST_F(ShownNotifications, ReplaceTheEarlierOneWhileItIsThere) {
  notifications_->show("first", "");
  ASSERT_TRUE(eventually([this] { return daemon_->shown().size() == 1; }));
  ASSERT_TRUE(clickIsHeard(101));
  notifications_->show("second", "");
  ASSERT_TRUE(eventually([this] { return daemon_->shown().size() == 2; }));
  EXPECT_EQ(daemon_->shown().back().replaces, 101U);
  daemon_->close(101);
  ASSERT_TRUE(clickIsHeard(101)) << "some tell of the closing before the click";
  notifications_->show("third", "");
  ASSERT_TRUE(eventually([this] { return daemon_->shown().size() == 3; }));
  EXPECT_EQ(daemon_->shown().back().replaces, 0U);
}

TEST_F(ShownNotifications, MayBeRefused) {
  daemon_->setRefuses(true);
  notifications_->show("first", "");
  ASSERT_TRUE(eventually([this] { return daemon_->refusals() == 1; }));
  daemon_->setRefuses(false);
  notifications_->show("second", "");
  ASSERT_TRUE(eventually([this] { return !daemon_->shown().empty(); }));
  EXPECT_EQ(daemon_->shown().back().summary, "second");
  EXPECT_EQ(daemon_->shown().back().replaces, 0U);
}

}  // namespace
