#include "ui/memory_pressure_view.h"
#include "ui/pressure_level.h"

double scaleOf(std::span<const Segment> segments) {
  double sum = 0;
  for (const Segment& segment : segments) sum += segment.fraction;
  return sum > 1 ? 1 / sum : 1;
}

namespace {

constexpr double kInsetX = 10;
constexpr double kInsetY = 6;
constexpr double kSmallestTrack = 4;  // a track this wide or high, or less, is not drawn

constexpr double kNarrowestSegment = 0.5;  // a segment this wide or less is not drawn
constexpr double kSegmentAlpha = 0.92;
constexpr double kDividerWidth = 1;

constexpr double kGlossRadius = 4;

void drawSegments(Canvas& canvas, const Rectangle& track, std::span<const Segment> segments) {
  const double scale = scaleOf(segments);
  double x = track.minX();
  for (const Segment& segment : segments) {
    const double width = scale * segment.fraction * track.width;
    if (width <= kNarrowestSegment) continue;
    canvas.fillRect({x, track.minY(), width, track.height}, segment.color.withAlpha(kSegmentAlpha));
    canvas.fillRect({x + width - kDividerWidth, track.minY(), kDividerWidth, track.height},
                    Color::white(0, 0.25));
    x += width;
    if (x >= track.maxX()) break;
  }
}

void drawTrack(Canvas& canvas, const Rectangle& track, std::span<const Segment> segments,
               double pressure) {
  const double radius = track.height / 2;
  canvas.fillRoundedRect(track, radius, Color::white(0.12, 0.85));
  canvas.strokeRoundedRect(track, radius, Color::white(1, 0.12), 1);

  canvas.saveState();
  canvas.clipToRoundedRect(track, radius);
  drawSegments(canvas, track, segments);
  const double pressureWidth = MemoryPressureView::kPressureShare * track.width;
  canvas.fillRect({track.maxX() - pressureWidth, track.minY(), pressureWidth, track.height},
                  pressureColor(pressureLevel(pressure)));
  canvas.restoreState();

  const Rectangle gloss{track.minX() + 1, track.midY(), track.width - 2, track.height * 0.5 - 1};
  canvas.fillRoundedRect(gloss, kGlossRadius, Color::white(1, 0.06));
}

std::optional<Rectangle> ifDrawn(const Rectangle& track) {
  if (track.width <= kSmallestTrack || track.height <= kSmallestTrack) return std::nullopt;
  return track;
}

}  // namespace

MemoryPressureView::Tracks MemoryPressureView::tracks(const Rectangle& bounds) const {
  if (!gpu) return {.ram = ifDrawn(bounds.insetBy(kInsetX, kInsetY)), .gpu = std::nullopt};
  Rectangle above = bounds;
  above.y += kGpuHeight;
  above.height -= kGpuHeight;
  Rectangle below = bounds.insetBy(kInsetX, kInsetY);
  below.height = kGpuHeight - kInsetY;
  return {.ram = ifDrawn(above.insetBy(kInsetX, kInsetY)), .gpu = ifDrawn(below)};
}

void MemoryPressureView::draw(Canvas& canvas, const Rectangle& bounds) const {
  const Tracks places = tracks(bounds);
  if (places.gpu) drawTrack(canvas, *places.gpu, gpu->segments, gpu->pressure);
  if (places.ram) drawTrack(canvas, *places.ram, segments, pressure);
}
