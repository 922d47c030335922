#include "scanner/lab_role.h"

#include <gtest/gtest.h>

namespace {

TEST(LabRole, IsDeclaredInTheOrderThatIsItsIndex) {
  EXPECT_EQ(static_cast<int>(LabRole::inference), 0);
  EXPECT_EQ(static_cast<int>(LabRole::training), 1);
  EXPECT_EQ(static_cast<int>(LabRole::agent), 2);
  EXPECT_EQ(static_cast<int>(LabRole::none), 3);
}

TEST(LabRole, IsMadeFromItsRawValueAndBack) {
  for (const auto role : {LabRole::inference, LabRole::training, LabRole::agent, LabRole::none}) {
    EXPECT_EQ(labRole(rawValue(role)), role) << rawValue(role);
  }
  EXPECT_EQ(rawValue(LabRole::training), "training");
}

TEST(LabRole, IsNotMadeFromAnyOtherText) {
  for (const auto* text : {"Inference", "", "none ", "server", "TRAINING"}) {
    EXPECT_EQ(labRole(text), std::nullopt) << '"' << text << '"';
  }
}

}  // namespace
