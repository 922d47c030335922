#include "frontends/qt/menu_style.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

namespace {

TEST(DrawnGlyphs, LettersAre) {
  EXPECT_TRUE(isDrawn("V", QApplication::font()));
}

TEST(DrawnGlyphs, WhatUnicodeDoesNotKnowIsNot) {
  EXPECT_FALSE(isDrawn("\U0003FFFD", QApplication::font()));
}

}  // namespace
