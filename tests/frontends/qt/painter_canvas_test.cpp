#include "frontends/qt/painter_canvas.h"

#include <gtest/gtest.h>

#include <QImage>

namespace {

constexpr int kSide = 20;
const Color kRed{1, 0, 0};

class PainterCanvasTest : public testing::Test {
 protected:
  PainterCanvasTest() : image(kSide, kSide, QImage::Format_ARGB32) { image.fill(Qt::white); }

  bool isRed(int x, int y) const { return image.pixelColor(x, y) == QColor(Qt::red); }
  bool isWhite(int x, int y) const { return image.pixelColor(x, y) == QColor(Qt::white); }

  QImage image;
};

TEST_F(PainterCanvasTest, OriginIsAtTheBottomLeft) {
  QPainter painter(&image);
  PainterCanvas(painter, kSide).fillRect({0, 0, 5, 5}, kRed);
  EXPECT_TRUE(isRed(2, kSide - 3));
  EXPECT_TRUE(isWhite(2, 2));
  EXPECT_TRUE(isWhite(7, kSide - 3));
}

TEST_F(PainterCanvasTest, OvalLeavesTheCorners) {
  QPainter painter(&image);
  PainterCanvas(painter, kSide).fillOval({0, 0, kSide, kSide}, kRed);
  EXPECT_TRUE(isRed(kSide / 2, kSide / 2));
  EXPECT_TRUE(isWhite(0, 0));
}

TEST_F(PainterCanvasTest, ClipEndsWithTheState) {
  QPainter painter(&image);
  PainterCanvas canvas(painter, kSide);
  canvas.saveState();
  canvas.clipToRoundedRect({0, 0, 10, kSide}, 0);
  canvas.fillRect({0, 0, kSide, 10}, kRed);
  canvas.restoreState();
  EXPECT_TRUE(isRed(5, kSide - 3));
  EXPECT_TRUE(isWhite(15, kSide - 3));
  canvas.fillRect({12, 0, 8, 10}, kRed);
  EXPECT_TRUE(isRed(15, kSide - 3));
}

TEST_F(PainterCanvasTest, StrokeLeavesTheInside) {
  QPainter painter(&image);
  PainterCanvas(painter, kSide).strokeRoundedRect({2, 2, 16, 16}, 0, kRed, 2);
  EXPECT_TRUE(isRed(2, 10));
  EXPECT_TRUE(isWhite(10, 10));
}

TEST_F(PainterCanvasTest, ColoursLieOverWhatIsThere) {
  QPainter painter(&image);
  PainterCanvas(painter, kSide).fillRect({0, 0, kSide, kSide}, kRed.withAlpha(0.5));
  const QColor mixed = image.pixelColor(10, 10);
  EXPECT_EQ(mixed.red(), 255);
  EXPECT_NEAR(mixed.green(), 128, 1);
}

TEST_F(PainterCanvasTest, RoundedRectLeavesTheCorners) {
  QPainter painter(&image);
  PainterCanvas(painter, kSide).fillRoundedRect({0, 0, kSide, kSide}, 8, kRed);
  EXPECT_TRUE(isWhite(0, 0));
  EXPECT_TRUE(isRed(0, 10));
}

}  // namespace
