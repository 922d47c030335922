#include "frontends/qt/missing_signs.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace {

bool always(const QString&) {
  return true;
}

bool never(const QString&) {
  return false;
}

TEST(MissingSigns, lettersAreShown) {
  EXPECT_TRUE(isShown("Vorda", QApplication::font()));
}

TEST(MissingSigns, whatUnicodeDoesNotKnowIsNot) {
  const char32_t unassigned = 0x3fffd;
  EXPECT_FALSE(isShown(QString::fromUcs4(&unassigned, 1), QApplication::font()));
}

TEST(MissingSigns, shownSignsStay) {
  EXPECT_EQ(withMissingSignsReplaced("★ vllm  ·  2.0 GB 🔒 ↺", always), "★ vllm  ·  2.0 GB 🔒 ↺");
}

TEST(MissingSigns, missingSignsBecomeWords) {
  EXPECT_EQ(withMissingSignsReplaced("★ vllm  ·  2.0 GB 🔒 ↺", never),
            "* vllm  ·  2.0 GB [locked] ~");
}

TEST(MissingSigns, textWithoutSignsIsNotLookedAt) {
  EXPECT_EQ(withMissingSignsReplaced("vllm  ·  2.0 GB", never), "vllm  ·  2.0 GB");
}

}  // namespace
