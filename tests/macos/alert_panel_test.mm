#include "frontends/appkit/alert_panel.h"

#import <AppKit/AppKit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/branding.h"
#include "macos/mac_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AlertPanel : public MacTest {
 protected:
  static appkit::ShownAlert shown(const Alert& alert) {
    runAlertPanel(alert);
    return appkit::record().alerts.back();
  }
};

TEST_F(AlertPanel, SaysWhatTheAlertSays) {
  const auto alert = shown({.messageText = "Unload com.é?", .informativeText = "a\n\nb"});
  EXPECT_EQ(alert.messageText, "Unload com.é?");
  EXPECT_EQ(alert.informativeText, "a\n\nb");
}

TEST_F(AlertPanel, WithoutButtonsLeavesAppKitToAddItsOwn) {
  EXPECT_THAT(shown({.messageText = "a"}).buttons, IsEmpty());
  EXPECT_EQ(runAlertPanel({.messageText = "a"}), kAlertDismissed);
}

TEST_F(AlertPanel, ButtonsAreAddedInTheirOrder) {
  EXPECT_THAT(shown({.messageText = "a", .buttons = {"Force Quit", "Cancel"}}).buttons,
              ElementsAre("Force Quit", "Cancel"));
}

TEST_F(AlertPanel, AnswersByTheButtonsPlace) {
  const Alert alert{.messageText = "a", .buttons = {"x", "Cancel"}};
  appkit::record().answers = {1000, 1001, -1001, -1000, 0};
  EXPECT_EQ(runAlertPanel(alert), kAlertFirstButtonReturn);
  EXPECT_EQ(runAlertPanel(alert), kAlertFirstButtonReturn + 1);
  EXPECT_EQ(runAlertPanel(alert), kAlertDismissed) << "aborted";
  EXPECT_EQ(runAlertPanel(alert), kAlertDismissed) << "stopped";
  EXPECT_EQ(runAlertPanel(alert), kAlertDismissed);
}

TEST_F(AlertPanel, WarningIsAWarning) {
  EXPECT_EQ(shown({.messageText = "a", .style = Alert::Style::warning}).style,
            static_cast<int>(NSAlertStyleWarning));
  EXPECT_EQ(shown({.messageText = "a"}).style, std::nullopt) << "AppKit's own";
}

TEST_F(AlertPanel, BringsTheProgramToTheFront) {
  EXPECT_TRUE(shown({.messageText = "a"}).programWasInFront);
}

TEST_F(AlertPanel, AboutDoesNotBringTheProgramToTheFront) {
  EXPECT_FALSE(shown(Branding::aboutAlert()).programWasInFront);
}

TEST_F(AlertPanel, AboutWithoutABadgeKeepsTheStandardIcon) {
  const auto about = shown(Branding::aboutAlert());
  EXPECT_EQ(about.messageText, "Vorda");
  EXPECT_EQ(about.informativeText, Branding::aboutBody());
  EXPECT_EQ(about.icon, "");
}

TEST_F(AlertPanel, AboutShowsTheBundlesBadge) {
  Stage::write(Stage::resourcesPath() + "/HalvekBadge.png", "PNG");
  Stage::write(Stage::resourcesPath() + "/HalvekBadge@2x.png", "PNG");
  const auto about = shown(Branding::aboutAlert());
  EXPECT_EQ(about.icon, "HalvekBadge.png");
  EXPECT_EQ(about.iconSide, 48);
}

TEST_F(AlertPanel, AboutFallsBackToTheLargeBadge) {
  Stage::write(Stage::resourcesPath() + "/HalvekBadge@2x.png", "PNG");
  EXPECT_EQ(shown(Branding::aboutAlert()).icon, "HalvekBadge@2x.png");
}

TEST_F(AlertPanel, AboutPassesOverABadgeThatIsNoPicture) {
  Stage::write(Stage::resourcesPath() + "/HalvekBadge.png", "");
  EXPECT_EQ(shown(Branding::aboutAlert()).icon, "");
}

TEST_F(AlertPanel, OtherAlertsHaveNoBadge) {
  Stage::write(Stage::resourcesPath() + "/HalvekBadge.png", "PNG");
  EXPECT_EQ(shown({.messageText = "a"}).icon, "");
}

}  // namespace
