#pragma once

#include <QPainter>

#include "ui/canvas.h"

/// Draws with a QPainter onto a surface that is `height` points high, converting from the origin
/// at the bottom left to Qt's at the top left.
class PainterCanvas : public Canvas {
 public:
  PainterCanvas(QPainter& painter, double height);

  void fillRect(const Rectangle& rect, const Color& color) override;
  void fillOval(const Rectangle& rect, const Color& color) override;
  void fillRoundedRect(const Rectangle& rect, double radius, const Color& color) override;
  void strokeRoundedRect(const Rectangle& rect, double radius, const Color& color,
                         double lineWidth) override;
  void saveState() override;
  void clipToRoundedRect(const Rectangle& rect, double radius) override;
  void restoreState() override;

 private:
  QRectF turned(const Rectangle& rect) const;

  QPainter& painter_;
  double height_;
};
