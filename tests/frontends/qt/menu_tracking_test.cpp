#include "frontends/qt/menu_tracking.h"

#include <gtest/gtest.h>

#include "frontends/qt/recording_delegate.h"

namespace {

using Shown = MenuTracking::Shown;
using Calls = std::vector<std::string>;

class MenuTrackingTest : public testing::Test {
 protected:
  MenuTrackingTest() { tracking.reportTo(&delegate); }

  RecordingDelegate delegate;
  MenuTracking tracking;
};

TEST_F(MenuTrackingTest, UpdatesBeforeItOpens) {
  tracking.begin(Shown::popup);
  EXPECT_EQ(delegate.calls, (Calls{"needsUpdate", "willOpen"}));
}

TEST_F(MenuTrackingTest, ClosesOnce) {
  tracking.begin(Shown::popup);
  delegate.calls.clear();
  tracking.end(Shown::popup);
  tracking.end(Shown::popup);
  EXPECT_EQ(delegate.calls, Calls{"didClose"});
}

TEST_F(MenuTrackingTest, OpeningTheOtherMenuClosesTheFirst) {
  tracking.begin(Shown::hostMenu);
  delegate.calls.clear();
  tracking.begin(Shown::popup);
  EXPECT_EQ(delegate.calls, (Calls{"didClose", "needsUpdate", "willOpen"}));
  delegate.calls.clear();
  tracking.end(Shown::hostMenu);
  EXPECT_TRUE(delegate.calls.empty()) << "the popup is the one that is open";
  tracking.end(Shown::popup);
  EXPECT_EQ(delegate.calls, Calls{"didClose"});
}

TEST_F(MenuTrackingTest, TellsNobodyWhenThereIsNobody) {
  tracking.reportTo(nullptr);
  tracking.begin(Shown::popup);
  tracking.end(Shown::popup);
  EXPECT_TRUE(delegate.calls.empty());
}

}  // namespace
