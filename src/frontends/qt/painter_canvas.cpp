#include "frontends/qt/painter_canvas.h"

#include <QColor>
#include <QPainterPath>
#include <algorithm>

namespace {

QColor toQColor(const Color& color) {
  const auto component = [](double value) {
    return static_cast<float>(std::clamp(value, 0.0, 1.0));
  };
  return QColor::fromRgbF(component(color.red), component(color.green), component(color.blue),
                          component(color.alpha));
}

}  // namespace

PainterCanvas::PainterCanvas(QPainter& painter, double height)
    : painter_(painter), height_(height) {
  painter_.setRenderHint(QPainter::Antialiasing);
}

QRectF PainterCanvas::turned(const Rectangle& rect) const {
  return {rect.x, height_ - rect.y - rect.height, rect.width, rect.height};
}

void PainterCanvas::fillRect(const Rectangle& rect, const Color& color) {
  painter_.fillRect(turned(rect), toQColor(color));
}

void PainterCanvas::fillOval(const Rectangle& rect, const Color& color) {
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(toQColor(color));
  painter_.drawEllipse(turned(rect));
}

void PainterCanvas::fillRoundedRect(const Rectangle& rect, double radius, const Color& color) {
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(toQColor(color));
  painter_.drawRoundedRect(turned(rect), radius, radius);
}

void PainterCanvas::strokeRoundedRect(const Rectangle& rect, double radius, const Color& color,
                                      double lineWidth) {
  painter_.setPen(QPen(toQColor(color), lineWidth));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawRoundedRect(turned(rect), radius, radius);
}

void PainterCanvas::saveState() {
  painter_.save();
}

void PainterCanvas::clipToRoundedRect(const Rectangle& rect, double radius) {
  QPainterPath path;
  path.addRoundedRect(turned(rect), radius, radius);
  painter_.setClipPath(path, Qt::IntersectClip);
}

void PainterCanvas::restoreState() {
  painter_.restore();
}
