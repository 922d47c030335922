#include "frontends/qt/strip_widget.h"

#include <QPainter>
#include <utility>

#include "frontends/qt/painter_canvas.h"
#include "frontends/qt/qt_text.h"
#include "ui/strip_text.h"

StripWidget::StripWidget(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

QSize StripWidget::sizeHint() const {
  return {kWidth, strip_ ? static_cast<int>(strip_->itemHeight()) : kHeight};
}

void StripWidget::setStrip(std::shared_ptr<const MemoryPressureView> strip) {
  strip_ = std::move(strip);
  setAccessibleName(strip_ ? toQString(stripDescription(*strip_)) : QString());
  updateGeometry();
  update();
}

void StripWidget::paintEvent(QPaintEvent*) {
  if (!strip_) return;
  QPainter painter(this);
  if (layoutDirection() == Qt::RightToLeft) {
    painter.translate(width(), 0);
    painter.scale(-1, 1);
  }
  PainterCanvas canvas(painter, height());
  strip_->draw(canvas, {0, 0, static_cast<double>(width()), static_cast<double>(height())});
}
