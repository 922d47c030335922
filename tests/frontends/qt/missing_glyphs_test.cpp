#include "frontends/qt/missing_glyphs.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace {

bool always(const QString&) {
  return true;
}

bool never(const QString&) {
  return false;
}

TEST(MissingGlyphs, LettersAreShown) {
  EXPECT_TRUE(isShown("Vorda", QApplication::font()));
}

TEST(MissingGlyphs, WhatUnicodeDoesNotKnowIsNot) {
  const char32_t unassigned = 0x3fffd;
  EXPECT_FALSE(isShown(QString::fromUcs4(&unassigned, 1), QApplication::font()));
}

TEST(MissingGlyphs, ShownGlyphsStay) {
  EXPECT_EQ(withMissingGlyphsReplaced("★ vllm  ·  2.0 GB 🔒 ↺", always), "★ vllm  ·  2.0 GB 🔒 ↺");
}

TEST(MissingGlyphs, MissingGlyphsBecomeWords) {
  EXPECT_EQ(withMissingGlyphsReplaced("★ vllm  ·  2.0 GB 🔒 ↺", never),
            "* vllm  ·  2.0 GB [locked] ~");
}

TEST(MissingGlyphs, TextWithoutThemIsNotLookedAt) {
  EXPECT_EQ(withMissingGlyphsReplaced("vllm  ·  2.0 GB", never), "vllm  ·  2.0 GB");
}

}  // namespace
