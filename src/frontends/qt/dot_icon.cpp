#include "frontends/qt/dot_icon.h"

#include <QBuffer>
#include <QIconEngine>
#include <QImage>
#include <QPainter>

#include "frontends/qt/painter_canvas.h"

namespace {

void drawDot(QPainter& painter, const Color& color) {
  PainterCanvas(painter, kDotSquare).fillOval(Dot::kOval, color);
}

class DotEngine : public QIconEngine {
 public:
  explicit DotEngine(const Color& color) : color_(color) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
    painter->save();
    painter->translate(rect.x() + (rect.width() - kDotSquare) / 2.0,
                       rect.y() + (rect.height() - kDotSquare) / 2.0);
    drawDot(*painter, color_);
    painter->restore();
  }

  QPixmap scaledPixmap(const QSize& size, QIcon::Mode, QIcon::State, qreal scale) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.scale(scale, scale);
    painter.translate((size.width() / scale - kDotSquare) / 2,
                      (size.height() / scale - kDotSquare) / 2);
    drawDot(painter, color_);
    return pixmap;
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1);
  }

  QIconEngine* clone() const override { return new DotEngine(color_); }

 private:
  Color color_;
};

}  // namespace

QIcon dotIcon(const Color& color) {
  return QIcon(new DotEngine(color));
}

QByteArray dotPng(const Color& color, int scale) {
  QImage image(kDotSquare * scale, kDotSquare * scale, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.scale(scale, scale);
  drawDot(painter, color);
  painter.end();
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return png;
}
