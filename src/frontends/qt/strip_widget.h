#pragma once

#include <QWidget>
#include <memory>

#include "ui/memory_pressure_view.h"

/// The strip as a widget, as wide as its place. Screen readers hear it in words.
class StripWidget : public QWidget {
 public:
  /// The size that the menu gives the strip; more height with the track of graphics cards.
  static constexpr int kWidth = static_cast<int>(MemoryPressureView::kItemWidth);
  static constexpr int kHeight = static_cast<int>(MemoryPressureView::kItemHeight);

  explicit StripWidget(QWidget* parent = nullptr);

  /// Draws this strip from now on, starting at once.
  void setStrip(std::shared_ptr<const MemoryPressureView> strip);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  std::shared_ptr<const MemoryPressureView> strip_;
};
