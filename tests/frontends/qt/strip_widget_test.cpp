#include "frontends/qt/strip_widget.h"

#include <gtest/gtest.h>

#include <QImage>

namespace {

const Color kStripRed{1, 0, 0};
const Color kStripBlue{0, 0, 1};

std::shared_ptr<MemoryPressureView> halfRedQuarterBlue() {
  auto strip = std::make_shared<MemoryPressureView>();
  strip->segments = {{0.5, kStripRed, "Ollama Server", 11, 4198},
                     {0.25, kStripBlue, "firefox", 12, 312}};
  strip->pressure = 0.9;
  return strip;
}

/// What the widget shows, `density` pixels a point.
QImage picture(StripWidget& widget, int density = 1, int height = StripWidget::kHeight) {
  widget.resize(StripWidget::kWidth, height);
  QImage image(widget.size() * density, QImage::Format_ARGB32);
  image.setDevicePixelRatio(density);
  image.fill(Qt::white);
  widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
  return image;
}

bool isReddish(const QColor& color) {
  return color.red() > 200 && color.blue() < 60;
}
bool isBluish(const QColor& color) {
  return color.blue() > 200 && color.red() < 60;
}

// The track lies 10 points from the left and right edges: 284 wide.
constexpr int kTrackLeft = 10;
constexpr int kTrackWidth = StripWidget::kWidth - 20;
constexpr int kBelowTheGloss = 30;

TEST(StripWidget, DrawsSegmentsFromTheLeftByTheirShare) {
  StripWidget widget;
  widget.setStrip(halfRedQuarterBlue());
  const QImage image = picture(widget);
  EXPECT_TRUE(isReddish(image.pixelColor(kTrackLeft + kTrackWidth / 4, kBelowTheGloss)));
  EXPECT_TRUE(isBluish(image.pixelColor(kTrackLeft + kTrackWidth * 5 / 8, kBelowTheGloss)));
  const QColor empty = image.pixelColor(kTrackLeft + kTrackWidth * 7 / 8, kBelowTheGloss);
  EXPECT_FALSE(isReddish(empty));
  EXPECT_FALSE(isBluish(empty));
}

TEST(StripWidget, MarksHighPressureInRedAtTheRightEnd) {
  StripWidget widget;
  widget.setStrip(halfRedQuarterBlue());
  const QColor pressure = picture(widget).pixelColor(kTrackLeft + kTrackWidth - 16, kBelowTheGloss);
  EXPECT_GT(pressure.red(), pressure.green() + 40);
}

TEST(StripWidget, FromRightToLeftIsMirrored) {
  StripWidget widget;
  widget.setStrip(halfRedQuarterBlue());
  widget.setLayoutDirection(Qt::RightToLeft);
  const QImage image = picture(widget);
  EXPECT_TRUE(isReddish(image.pixelColor(kTrackLeft + kTrackWidth * 3 / 4, kBelowTheGloss)));
  EXPECT_TRUE(isBluish(image.pixelColor(kTrackLeft + kTrackWidth * 3 / 8, kBelowTheGloss)));
}

TEST(StripWidget, IsCrispOnADenserScreen) {
  StripWidget widget;
  widget.setStrip(halfRedQuarterBlue());
  const QImage image = picture(widget, 2);
  const int border = 2 * (kTrackLeft + kTrackWidth / 2);
  EXPECT_TRUE(isReddish(image.pixelColor(border - 4, 2 * kBelowTheGloss)));
  EXPECT_TRUE(isBluish(image.pixelColor(border + 1, 2 * kBelowTheGloss)));
}

TEST(StripWidget, HasAThinnerTrackOfTheCardsBelow) {
  StripWidget widget;
  const auto strip = halfRedQuarterBlue();
  widget.setStrip(strip);
  EXPECT_EQ(widget.sizeHint().height(), StripWidget::kHeight);
  strip->gpu = GpuTrack{.segments = {{0.5, kStripBlue, "firefox", 12, 8192}}, .pressure = 0.5};
  widget.setStrip(strip);
  const int height = static_cast<int>(strip->itemHeight());
  EXPECT_EQ(widget.sizeHint().height(), height);
  const QImage image = picture(widget, 1, height);
  const auto isBlueAt = [&](int y) {
    return isBluish(image.pixelColor(kTrackLeft + kTrackWidth / 4, y));
  };
  // From the bottom: 6 points of ground, 10 of the cards' track, 6 of ground, the strip's track.
  EXPECT_FALSE(isBlueAt(height - 4));
  EXPECT_TRUE(isBlueAt(height - 8));
  EXPECT_FALSE(isBlueAt(height - 19));
  EXPECT_TRUE(isReddish(image.pixelColor(kTrackLeft + kTrackWidth / 4, height - 28)));
  EXPECT_FALSE(isBluish(image.pixelColor(kTrackLeft + kTrackWidth * 3 / 4, height - 8)))
      << "half of the cards is free";
}

TEST(StripWidget, FollowsItsStrip) {
  StripWidget widget;
  const auto strip = halfRedQuarterBlue();
  widget.setStrip(strip);
  strip->segments = {{1, kStripBlue, "firefox", 12, 8192}};
  EXPECT_TRUE(isBluish(picture(widget).pixelColor(kTrackLeft + kTrackWidth / 4, kBelowTheGloss)));
}

TEST(StripWidget, IsReadOutInWords) {
  StripWidget widget;
  widget.setStrip(halfRedQuarterBlue());
  EXPECT_EQ(widget.accessibleName(),
            "Memory 90 percent used: Ollama Server 4.1 GB, firefox 312 MB");
}

TEST(StripWidget, WithoutAStripIsEmpty) {
  StripWidget widget;
  EXPECT_EQ(picture(widget).pixelColor(100, 20), QColor(Qt::white));
  EXPECT_TRUE(widget.accessibleName().isEmpty());
}

}  // namespace
