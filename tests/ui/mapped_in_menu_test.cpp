#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "ui/controller_test.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class MappedInMenu : public ControllerTest {
 protected:
  MappedInMenu() {
    ScriptedProcess& server = addProcess(7, "llama-server", 120);
    server.fileMB = 1536;
    server.mappedFiles = {{"/m/a.gguf", 1536ULL << 20}};
    addProcess(8, "gimp", 300);
  }
  /// As they are after a while.
  const std::string& details(std::int32_t pid) {
    frontEnd_.whileAlertIsOpen = [this](const Alert&) { frontEnd_.advance(2); };
    choose(pid, Action::showDetails);
    return lastAlert().informativeText;
  }
};

TEST_F(MappedInMenu, RowTooltipSubmenuAndDetailsTell) {
  machine().find(7)->fairMB = 512;
  start();
  EXPECT_THAT(row(7).title, EndsWith("  ·   120 MB  ·  +1.5 GB mapped"));
  EXPECT_THAT(row(7).toolTip,
              EndsWith("\nMapped: 1.5 GB, not counted above: others may use the same"));
  EXPECT_EQ(row(7).submenu.at(2).title, "Mapped: 1.5 GB");
  EXPECT_FALSE(row(7).submenu.at(2).enabled);
  EXPECT_THAT(details(7), HasSubstr("\nMapped: 1.5 GB, not counted above: others may use the same"
                                    "\n  a.gguf  ·  1.5 GB\nIts fair share: 512 MB\n"));
}

TEST_F(MappedInMenu, AnOrdinaryRowTellsOnlyInside) {
  machine().find(8)->sharedMB = 1024;
  start();
  EXPECT_EQ(row(8).title, "gimp  ·   300 MB");
  EXPECT_EQ(row(8).submenu.at(2).title, "Shared: 1.0 GB");
}

TEST_F(MappedInMenu, WhatHasNoneIsAsItWas) {
  start();
  EXPECT_EQ(row(8).submenu.size(), 6U);
  EXPECT_THAT(row(8).toolTip, EndsWith("above."));
  EXPECT_THAT(details(8), Not(HasSubstr("share")));
  EXPECT_EQ(machine().fairSharesAsked, 0);
}

TEST_F(MappedInMenu, DetailsOpenAtOnceAndFillIn) {
  machine().find(7)->fairMB = 512;
  machine().fairSharesTakeTime = true;
  start();
  frontEnd_.whileAlertIsOpen = [this](const Alert& alert) {
    EXPECT_THAT(alert.informativeText, Not(HasSubstr("fair share")));
    frontEnd_.advance(4);
    EXPECT_EQ(frontEnd_.alertChanges, 0);
    machine().fairSharesTakeTime = false;
    frontEnd_.advance(1);
    EXPECT_EQ(frontEnd_.alertChanges, 1);
  };
  choose(7, Action::showDetails);
  EXPECT_THAT(lastAlert().informativeText, HasSubstr("\nIts fair share: 512 MB\n"));
  frontEnd_.advance(5);
  EXPECT_EQ(frontEnd_.alertChanges, 1);
}

TEST_F(MappedInMenu, NothingIsSaidOfAShareThatIsNotThere) {
  start();
  EXPECT_THAT(details(7), Not(HasSubstr("fair share")));
}

TEST_F(MappedInMenu, NothingIsSaidOfTheShareOfAnother) {
  machine().find(7)->fairMB = 512;
  start();
  machine().find(7)->identity = 99;
  EXPECT_THAT(details(7), Not(HasSubstr("fair share")));
}

TEST_F(MappedInMenu, SumsAndStripKnowNothingOfIt) {
  start();
  EXPECT_EQ(row("Largest").title, "Largest  300 MB  gimp");
}

TEST_F(MappedInMenu, AFamilysShareIsItsMembers) {
  machine().find(8)->parent = 7;
  machine().find(7)->fairMB = 512;
  machine().find(8)->fairMB = 100;
  start();
  EXPECT_THAT(details(8), HasSubstr("\nIts 2 processes together: 612 MB\n"));
  machine().find(8)->fairMB.reset();
  EXPECT_THAT(details(8), Not(HasSubstr("together")));
}

}  // namespace
