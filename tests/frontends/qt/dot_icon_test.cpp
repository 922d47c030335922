#include "frontends/qt/dot_icon.h"

#include <gtest/gtest.h>

#include <QImage>

namespace {

const Color kBlue{0, 0, 1};

int bluePixels(const QImage& image) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == QColor(Qt::blue);
  }
  return count;
}

TEST(DotIcon, IsEightPointsWideInTheMiddle) {
  const QImage image = dotIcon(kBlue).pixmap(QSize(16, 16), 1).toImage();
  ASSERT_EQ(image.size(), QSize(16, 16));
  EXPECT_EQ(image.pixelColor(8, 8), QColor(Qt::blue));
  EXPECT_GT(image.pixelColor(4, 8).alpha(), 200);
  EXPECT_GT(image.pixelColor(11, 8).alpha(), 200);
  EXPECT_EQ(image.pixelColor(3, 8).alpha(), 0);
  EXPECT_EQ(image.pixelColor(12, 8).alpha(), 0);
}

TEST(DotIcon, IsDrawnAnewForADenserScreen) {
  const QPixmap pixmap = dotIcon(kBlue).pixmap(QSize(16, 16), 2);
  const QImage image = pixmap.toImage();
  ASSERT_EQ(image.size(), QSize(32, 32));
  EXPECT_EQ(pixmap.devicePixelRatio(), 2);
  EXPECT_GT(image.pixelColor(8, 16).alpha(), 200);
  EXPECT_EQ(image.pixelColor(7, 16).alpha(), 0);
  // Four times the pixels, and no blurred rim of an enlarged picture.
  EXPECT_GT(bluePixels(image), 3 * bluePixels(dotIcon(kBlue).pixmap(QSize(16, 16), 1).toImage()));
}

TEST(DotIcon, IsAPictureForHosts) {
  const QImage image = QImage::fromData(dotPng(kBlue, 2), "PNG");
  ASSERT_EQ(image.size(), QSize(2 * kDotSquare, 2 * kDotSquare));
  EXPECT_EQ(image.pixelColor(kDotSquare, kDotSquare), QColor(Qt::blue));
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
}

}  // namespace
