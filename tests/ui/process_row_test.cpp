#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "ui/process_color.h"
#include "ui/shown_process.h"

namespace {

using testing::EndsWith;
using testing::StartsWith;

class ProcessRow : public ShownProcess {};

TEST_F(ProcessRow, SaysRoleNameAndMemory) {
  EXPECT_EQ(item().title, "★ Ollama Server  ·   1.5 GB");
  process_.memMB = 512;
  EXPECT_EQ(item().title, "★ Ollama Server  ·   512 MB");
}

TEST_F(ProcessRow, HasAStarForEveryRoleAndNoneWithout) {
  for (const auto role : {LabRole::inference, LabRole::training, LabRole::agent}) {
    process_.labRole = role;
    EXPECT_THAT(item().title, StartsWith("★ Ollama")) << rawValue(role);
  }
  process_.labRole = LabRole::none;
  EXPECT_THAT(item().title, StartsWith("Ollama"));
}

TEST_F(ProcessRow, HasALockWhenProtected) {
  protect();
  EXPECT_THAT(item().title, EndsWith("1.5 GB 🔒"));
}

struct NameRow {
  const char* name;
  std::string displayName;
  std::string shown;
};

class ProcessRowName : public ProcessRow, public testing::WithParamInterface<NameRow> {};

TEST_P(ProcessRowName, IsCutFrom43CharactersOn) {
  process_.labRole = LabRole::none;
  process_.displayName = GetParam().displayName;
  EXPECT_EQ(item().title, GetParam().shown + "  ·   1.5 GB");
  EXPECT_THAT(item().toolTip, StartsWith(GetParam().displayName + "\n"));
}

std::string times(int count, const char* text) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

INSTANTIATE_TEST_SUITE_P(Table, ProcessRowName,
                         testing::Values(NameRow{"Empty", "", ""},
                                         NameRow{"Of42", times(42, "x"), times(42, "x")},
                                         NameRow{"Of43", times(43, "x"), times(41, "x") + "…"},
                                         NameRow{"Of42Emoji", times(42, "👩‍👩‍👧"),
                                                 times(42, "👩‍👩‍👧")},
                                         NameRow{"Of43Emoji", times(43, "👩‍👩‍👧"),
                                                 times(41, "👩‍👩‍👧") + "…"}),
                         rowName<NameRow>);

TEST_F(ProcessRow, TellsMoreInItsToolTip) {
  EXPECT_EQ(item().toolTip,
            "Ollama Server\n1.50 GB · Ollama · pid 77\nOwner: ada\n"
            "Color matches the pressure strip above.");
}

TEST_F(ProcessRow, SaysInItsToolTipThatItIsProtected) {
  protect();
  EXPECT_EQ(item().toolTip,
            "Ollama Server\n1.50 GB · Ollama · pid 77\nOwner: root (protected)\n"
            "Color matches the pressure strip above.");
}

TEST_F(ProcessRow, CannotForgeALineOfItsToolTip) {
  process_.displayName = "x\nOwner: root";
  EXPECT_THAT(item().toolTip, StartsWith("x\uFFFDOwner: root\n1.50 GB"));
}

TEST_F(ProcessRow, SaysWhereInItsToolTipTheOwnersLineEnds) {
  process_.displayName = process_.product = "Owner: root";
  EXPECT_THAT(item().toolTip.substr(0, item().ownerEnd), EndsWith(" · pid 77\nOwner: ada"));
  protect();
  EXPECT_THAT(item().toolTip.substr(0, item().ownerEnd), EndsWith("\nOwner: root (protected)"));
}

TEST_F(ProcessRow, HasTheDotOfItsStripSegment) {
  EXPECT_EQ(item().dot, ProcessColor::color(process_));
  protect();
  process_.labRole = LabRole::none;
  EXPECT_EQ(item().dot, ProcessColor::systemMuted());
}

TEST_F(ProcessRow, DoesNothingItself) {
  EXPECT_EQ(item().action, Action::none);
  EXPECT_EQ(item().representedObject, RepresentedObject{});
  EXPECT_TRUE(item().enabled);
}

}  // namespace
