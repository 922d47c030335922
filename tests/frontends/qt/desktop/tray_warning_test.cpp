// What the tray does when memory is short: the icon, the desktop's notification, the window.
#include "frontends/qt/desktop/notification_daemon.h"
#include "frontends/qt/desktop/tray_test.h"

namespace {

class TrayWarning : public TrayTest {
 protected:
  void SetUp() override {
    TrayTest::SetUp();
    if (!IsSkipped()) desktop.setProgram(SHORT_OF_MEMORY);
  }

  bool eventually(const std::function<bool()>& done) {
    return host->eventually([&] {
      if (daemon_) daemon_->process();
      return done();
    });
  }

  std::unique_ptr<NotificationDaemon> daemon_;
};

TEST_F(TrayWarning, AsksForAttentionAndOpensTheRowInAWindowOfItsOwn) {
  daemon_ = std::make_unique<NotificationDaemon>(desktop.busAddress());
  startInTray();
  ASSERT_TRUE(eventually([this] { return !daemon_->shown().empty(); }));
  EXPECT_EQ(daemon_->shown().front().summary, "Processes wait for memory");
  EXPECT_TRUE(daemon_->shown().front().body.ends_with(
      "The largest process is &lt;i&gt;train &amp; co with 4.00 GB."))
      << daemon_->shown().front().body;
  EXPECT_EQ(host->status(), "NeedsAttention");
  EXPECT_FALSE(desktop.showsWindow(kWindow));

  // The program may not have heard yet what its notification is called.
  ASSERT_TRUE(eventually([this] {
    daemon_->act(101, "default");
    return desktop.showsWindow(kMenu);
  }));
  // Of several clicks a later one may be opening both anew.
  EXPECT_TRUE(eventually([this] { return desktop.showsWindow(kWindow); }));
  EXPECT_TRUE(eventually([this] { return host->status() == "Active"; }));
}

TEST_F(TrayWarning, IsGivenByTheIconAloneWhereNobodyShowsNotifications) {
  startInTray();
  EXPECT_TRUE(eventually([this] { return host->status() == "NeedsAttention"; }));
}

}  // namespace
