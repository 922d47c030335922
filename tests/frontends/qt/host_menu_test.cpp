#include "frontends/qt/bus/host_menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontends/qt/bus_pair.h"
#include "frontends/qt/event_loop.h"
#include "frontends/qt/host_item.h"
#include "frontends/qt/menu_examples.h"

namespace {

using Signals = std::vector<std::string>;
using testing::Contains;
using testing::Not;

class HostMenuTest : public testing::Test {
 protected:
  HostMenuTest() : hostMenu(pair.served(), model, kTimes) {
    QObject::connect(&hostMenu, &HostMenu::opening, [this] {
      ++openings;
      if (onOpening) onOpening();
    });
    QObject::connect(&hostMenu, &HostMenu::closed, [this] { ++closings; });
    QObject::connect(
        &hostMenu, &HostMenu::chosen,
        [this](const std::shared_ptr<const MenuItem>& item) { chosen.push_back(item->title); });
    hostMenu.show(menuOf(exampleItems()));
    pair.takeSignals();
  }

  BusMessage newCall(const char* member) const {
    return pair.newCall(HostMenu::kPath, "com.canonical.dbusmenu", member);
  }

  HostItem layout(int parent = 0, int depth = -1) const {
    const BusMessage call = newCall("GetLayout");
    sd_bus_message_append(call.get(), "iias", parent, depth, 0);
    const BusMessage reply = pair.send(call);
    EXPECT_FALSE(sd_bus_message_is_method_error(reply.get(), nullptr));
    sd_bus_message_read(reply.get(), "u", &revision);
    return readHostItem(reply.get());
  }

  void event(int id, const char* kind) const {
    const BusMessage call = newCall("Event");
    sd_bus_message_append(call.get(), "isvu", id, kind, "s", "", 0U);
    EXPECT_FALSE(sd_bus_message_is_method_error(pair.send(call).get(), nullptr));
  }

  bool aboutToShow(int id = 0) const {
    const BusMessage call = newCall("AboutToShow");
    sd_bus_message_append(call.get(), "i", id);
    int changed = 0;
    sd_bus_message_read(pair.send(call).get(), "b", &changed);
    return changed != 0;
  }

  static constexpr int kPatience = 50;  // milliseconds
  /// Each announcement is an opening of its own.
  static constexpr HostMenuTimes kTimes{.longestTracking = kPatience, .oneOpening = 0};

  mutable unsigned revision = 0;
  BusPair pair;
  ExportedMenu model;
  HostMenu hostMenu;
  int openings = 0;
  int closings = 0;
  std::function<void()> onOpening;
  std::vector<std::string> chosen;
};

TEST_F(HostMenuTest, HostReadsEveryItem) {
  const HostItem root = layout();
  ASSERT_EQ(root.children.size(), 8U);
  const HostItem& strip = root.children.at(0);
  EXPECT_EQ(strip.label, "██████░░░░ 62%");
  EXPECT_EQ(strip.accessible, "Memory 62 percent used");
  EXPECT_FALSE(strip.enabled);
  EXPECT_EQ(root.children.at(2).type, "separator");
  const HostItem& row = root.children.at(4);
  EXPECT_EQ(row.label, "train__lora.py  ·  312 MB");
  EXPECT_GT(row.iconBytes, 0U);
  EXPECT_TRUE(row.enabled);
  ASSERT_EQ(row.children.size(), 4U);
  EXPECT_EQ(row.children.at(2).label, "Quit");
}

TEST_F(HostMenuTest, HostReadsOneLevelOrOneSubmenu) {
  EXPECT_TRUE(layout(0, 1).children.at(3).children.empty());
  const HostItem row = layout(layout().children.at(3).id);
  EXPECT_EQ(row.children.size(), 4U);
}

TEST_F(HostMenuTest, HostReadsOnlyWhatItAsksFor) {
  const BusMessage call = newCall("GetGroupProperties");
  sd_bus_message_append(call.get(), "aias", 2, 1, 2, 1, "enabled");
  const BusMessage reply = pair.send(call);
  sd_bus_message_enter_container(reply.get(), 'a', "(ia{sv})");
  int items = 0;
  while (sd_bus_message_enter_container(reply.get(), 'r', "ia{sv}") > 0) {
    int id = 0;
    HostItem item;
    sd_bus_message_read(reply.get(), "i", &id);
    sd_bus_message_enter_container(reply.get(), 'a', "{sv}");
    while (sd_bus_message_enter_container(reply.get(), 'e', "sv") > 0) {
      readHostItemProperty(reply.get(), item);
      sd_bus_message_exit_container(reply.get());
    }
    sd_bus_message_exit_container(reply.get());
    sd_bus_message_exit_container(reply.get());
    EXPECT_TRUE(item.label.empty());
    EXPECT_FALSE(item.enabled);
    ++items;
  }
  EXPECT_EQ(items, 2);
}

TEST_F(HostMenuTest, HostReadsOneProperty) {
  const BusMessage call = newCall("GetProperty");
  sd_bus_message_append(call.get(), "is", layout().children.at(6).id, "label");
  const BusMessage reply = pair.send(call);
  const char* label = nullptr;
  sd_bus_message_read(reply.get(), "v", "s", &label);
  EXPECT_STREQ(label, "Refresh now");
}

TEST_F(HostMenuTest, ItemThatIsNotThereIsAnError) {
  const BusMessage call = newCall("GetLayout");
  sd_bus_message_append(call.get(), "iias", 4711, -1, 0);
  EXPECT_TRUE(sd_bus_message_is_method_error(pair.send(call).get(), nullptr));
}

TEST_F(HostMenuTest, ClickChoosesTheItem) {
  event(layout().children.at(3).children.at(2).id, "clicked");
  EXPECT_EQ(chosen, std::vector<std::string>{"Quit"});
}

TEST_F(HostMenuTest, ClicksInAGroupChooseTheirItems) {
  const int id = layout().children.at(6).id;
  const BusMessage call = newCall("EventGroup");
  sd_bus_message_append(call.get(), "a(isvu)", 2, id, "hovered", "i", 0, 0U, id, "clicked", "i", 0,
                        0U);
  EXPECT_FALSE(sd_bus_message_is_method_error(pair.send(call).get(), nullptr));
  EXPECT_EQ(chosen, std::vector<std::string>{"Refresh now"});
}

TEST_F(HostMenuTest, ClickOnWhatCanNotBeChosenIsIgnored) {
  const HostItem root = layout();
  event(root.children.at(1).id, "clicked");
  event(root.children.at(2).id, "clicked");
  event(root.children.at(3).id, "clicked");
  event(4711, "clicked");
  EXPECT_TRUE(chosen.empty());
}

TEST_F(HostMenuTest, ClickOnAProcessThatWentReachesNoOther) {
  const int id = layout().children.at(3).children.at(2).id;
  hostMenu.show(menuOf({processRow(11, "ollama", 2)}));
  event(id, "clicked");
  EXPECT_TRUE(chosen.empty());
}

TEST_F(HostMenuTest, ItemsAreBroughtUpToDateBeforeTheHostShowsThem) {
  onOpening = [this] { hostMenu.show(menuOf({processRow(13, "new")})); };
  EXPECT_TRUE(aboutToShow());
  EXPECT_EQ(layout().children.at(0).label, "new  ·  312 MB");
  EXPECT_EQ(openings, 1);
}

TEST_F(HostMenuTest, NewsOfAnOpeningAreTheAnswerAndNoSignal) {
  onOpening = [this] { hostMenu.show(menuOf({processRow(13, "new")})); };
  EXPECT_TRUE(aboutToShow());
  hostMenu.show(menuOf({processRow(14, "newer")}));
  EXPECT_EQ(layout().children.at(0).label, "new  ·  312 MB");
  EXPECT_TRUE(pair.takeSignals().empty());
}

TEST_F(HostMenuTest, NewsThatOnlyAnAnswerToldAreSignalledAfterTheClosing) {
  onOpening = [this] { hostMenu.show(menuOf({processRow(13, "new")})); };
  aboutToShow();
  event(0, "closed");
  EXPECT_EQ(pair.takeSignals(), Signals{"LayoutUpdated"});
  onOpening = nullptr;
  aboutToShow();
  event(0, "closed");
  EXPECT_TRUE(pair.takeSignals().empty());
}

TEST_F(HostMenuTest, NewsOfAnOpeningThatWaitsForNoAnswerAreSignalled) {
  onOpening = [this] { hostMenu.show(menuOf({processRow(13, "new")})); };
  const BusMessage call = newCall("AboutToShow");
  sd_bus_message_append(call.get(), "i", 0);
  sd_bus_message_set_expect_reply(call.get(), 0);
  sd_bus_send(pair.caller(), call.get(), nullptr);
  layout();
  EXPECT_EQ(pair.takeSignals(), Signals{"LayoutUpdated"});
}

TEST_F(HostMenuTest, SecondAnnouncementOfAnOpeningChangesNothing) {
  HostMenuTimes slow = kTimes;
  slow.oneOpening = 60000;
  ExportedMenu other;
  BusPair otherPair;
  int updates = 0;
  HostMenu plasma(otherPair.served(), other, slow);
  QObject::connect(&plasma, &HostMenu::opening,
                   [&] { plasma.show(menuOf({processRow(100 + ++updates, "new")})); });
  const auto announce = [&otherPair] {
    const BusMessage call =
        otherPair.newCall(HostMenu::kPath, "com.canonical.dbusmenu", "AboutToShow");
    sd_bus_message_append(call.get(), "i", 0);
    int changed = 0;
    sd_bus_message_read(otherPair.send(call).get(), "b", &changed);
    return changed != 0;
  };
  EXPECT_TRUE(announce());
  EXPECT_TRUE(announce()) << "nobody has read it yet";
  const BusMessage call = otherPair.newCall(HostMenu::kPath, "com.canonical.dbusmenu", "GetLayout");
  sd_bus_message_append(call.get(), "iias", 0, -1, 0);
  otherPair.send(call);
  EXPECT_FALSE(announce());
  EXPECT_EQ(updates, 1);
  EXPECT_TRUE(otherPair.takeSignals().empty());
}

TEST_F(HostMenuTest, NextAnnouncementIsTheNextOpening) {
  aboutToShow();
  aboutToShow();
  EXPECT_EQ(openings, 2);
}

TEST_F(HostMenuTest, HasItsTimesInTheProgram) {
  const HostMenuTimes usual;
  EXPECT_EQ(usual.longestTracking, 5 * 60 * 1000);
  EXPECT_EQ(usual.oneOpening, 1000);
}

TEST_F(HostMenuTest, OpeningWithoutNewsIsNoChange) {
  EXPECT_FALSE(aboutToShow());
}

TEST_F(HostMenuTest, OpeningInAGroupCounts) {
  const BusMessage call = newCall("AboutToShowGroup");
  sd_bus_message_append(call.get(), "ai", 1, 0);
  pair.send(call);
  EXPECT_EQ(openings, 1);
}

TEST_F(HostMenuTest, OpeningASubmenuIsNoOpening) {
  aboutToShow(layout().children.at(3).id);
  EXPECT_EQ(openings, 0);
}

TEST_F(HostMenuTest, HostThatOnlySaysOpenedIsHeard) {
  event(0, "opened");
  EXPECT_EQ(openings, 1);
}

TEST_F(HostMenuTest, OpenMenuKeepsItsItems) {
  aboutToShow();
  const HostItem before = layout();
  pair.takeSignals();
  hostMenu.show(menuOf({processRow(13, "new")}));
  EXPECT_EQ(layout().children.size(), before.children.size());
  EXPECT_THAT(pair.takeSignals(), Not(Contains("LayoutUpdated")));
}

TEST_F(HostMenuTest, StripMovesInTheOpenMenu) {
  aboutToShow();
  pair.takeSignals();
  MemoryPressureView strip;
  strip.pressure = 0.9;
  hostMenu.showStrip(strip);
  EXPECT_EQ(pair.takeSignals(), Signals{"ItemsPropertiesUpdated"});
  EXPECT_EQ(layout().children.at(0).label, "█████████░ 90%");
}

TEST_F(HostMenuTest, LabelsWaitWhereTheHostWouldNoLongerScroll) {
  MemoryPressureView strip;
  onOpening = [this, &strip] {
    strip.pressure = 0.8;
    hostMenu.showStrip(strip);
  };
  model.setMostUnscrolled(5);
  aboutToShow();
  strip.pressure = 0.9;
  hostMenu.showStrip(strip);
  EXPECT_TRUE(pair.takeSignals().empty());
  event(0, "closed");
  EXPECT_EQ(pair.takeSignals(), Signals{"ItemsPropertiesUpdated"});
  EXPECT_EQ(layout().children.at(0).label, "█████████░ 90%");
  strip.pressure = 0.7;
  hostMenu.showStrip(strip);
  EXPECT_EQ(pair.takeSignals(), Signals{"ItemsPropertiesUpdated"}) << "closed it stays up to date";
}

TEST_F(HostMenuTest, StripMovesWhereAllItemsHaveRoom) {
  model.setMostUnscrolled(6);
  aboutToShow();
  MemoryPressureView strip;
  strip.pressure = 0.9;
  hostMenu.showStrip(strip);
  EXPECT_EQ(pair.takeSignals(), Signals{"ItemsPropertiesUpdated"});
}

TEST_F(HostMenuTest, ItemsCatchUpWhenTheHostClosesTheMenu) {
  aboutToShow();
  hostMenu.show(menuOf({processRow(13, "new")}));
  pair.takeSignals();
  event(0, "closed");
  EXPECT_EQ(closings, 1);
  EXPECT_EQ(pair.takeSignals(), Signals{"LayoutUpdated"});
  EXPECT_EQ(layout().children.size(), 1U);
}

TEST_F(HostMenuTest, ChoosingClosesTheMenu) {
  aboutToShow();
  event(layout().children.at(6).id, "clicked");
  EXPECT_EQ(closings, 1);
  EXPECT_EQ(chosen, std::vector<std::string>{"Refresh now"});
}

TEST_F(HostMenuTest, HostThatNeverSaysClosedIsNotWaitedForForever) {
  aboutToShow();
  EXPECT_TRUE(eventually([this] { return closings == 1; }));
}

TEST_F(HostMenuTest, HostThatSaysClosedIsWaitedFor) {
  aboutToShow();
  event(0, "closed");
  aboutToShow();
  QTimer::singleShot(4 * kPatience, &hostMenu, [this] { openings = 100; });
  EXPECT_TRUE(eventually([this] { return openings == 100; }));
  EXPECT_EQ(closings, 1);
}

TEST_F(HostMenuTest, AnotherMenuThatOpensClosesThisOne) {
  aboutToShow();
  hostMenu.assumeClosed();
  hostMenu.assumeClosed();
  EXPECT_EQ(closings, 1);
}

TEST_F(HostMenuTest, HostThatGoesTakesTheMenuAndItsWordWithIt) {
  aboutToShow();
  event(0, "closed");
  aboutToShow();
  hostMenu.hostGone();
  EXPECT_EQ(closings, 2);
  aboutToShow();  // of the next host, which may never say so
  EXPECT_TRUE(eventually([this] { return closings == 3; }));
}

TEST_F(HostMenuTest, AnotherHostIsToldOfItsMenu) {
  aboutToShow();
  pair.takeSignals();
  hostMenu.setHost(TrayHostKind::gnomeShell);
  EXPECT_EQ(closings, 1);
  EXPECT_EQ(pair.takeSignals(), Signals{"LayoutUpdated"});
  EXPECT_EQ(layout().children.at(1).label, "Open Vorda…");
}

TEST_F(HostMenuTest, NewFiguresTravelInOneSignal) {
  hostMenu.show(menuOf({processRow(11, "a", 1, "1 MB"), processRow(12, "b", 1, "1 MB")}));
  pair.takeSignals();
  hostMenu.show(menuOf({processRow(11, "a", 1, "2 MB"), processRow(12, "b", 1, "2 MB")}));
  EXPECT_EQ(pair.takeSignals(), Signals{"ItemsPropertiesUpdated"});
}

TEST_F(HostMenuTest, AnotherLayoutHasAnotherRevision) {
  layout();
  const unsigned before = revision;
  hostMenu.show(menuOf({processRow(13, "new")}));
  layout();
  EXPECT_GT(revision, before);
}

TEST_F(HostMenuTest, WithoutNewsTheBusIsLeftAlone) {
  hostMenu.show(menuOf(exampleItems()));
  EXPECT_TRUE(pair.takeSignals().empty());
}

TEST_F(HostMenuTest, TellsWhichSubmenuOpens) {
  std::vector<std::string> opened;
  QObject::connect(
      &hostMenu, &HostMenu::submenuOpening,
      [&](const std::shared_ptr<const MenuItem>& item) { opened.push_back(item->title); });
  const HostItem root = layout();
  EXPECT_FALSE(aboutToShow(root.children.at(4).id));
  event(root.children.at(3).id, "opened");
  aboutToShow(root.children.at(1).id);  // no submenu
  aboutToShow(4711);
  EXPECT_EQ(opened, (std::vector<std::string>{"train_lora.py  ·  312 MB", "ollama  ·  312 MB"}));
  EXPECT_EQ(openings, 0);
}

TEST_F(HostMenuTest, ALiveTitleChangesWhileTheMenuIsOpen) {
  const auto shown = menuOf({rowWithLiveTitle(11, "up to 3 GB")});
  hostMenu.show(shown);
  aboutToShow();
  pair.takeSignals();
  shown->items.front().submenu.front().live->title = "2 GB";
  hostMenu.showTitles();
  EXPECT_THAT(pair.takeSignals(), Contains("ItemsPropertiesUpdated"));
  EXPECT_EQ(layout().children.at(0).children.at(0).label, "2 GB");
}

}  // namespace
