#include "frontends/qt/screen_place.h"

#include <QRect>
#include <algorithm>

QPoint cornerWithin(QPoint corner, QSize window, const QRect& area) {
  const auto within = [](int wanted, int from, int to) {
    return std::clamp(wanted, from, std::max(from, to));
  };
  return {within(corner.x(), area.left(), area.right() + 1 - window.width()),
          within(corner.y(), area.top(), area.bottom() + 1 - window.height())};
}

QPoint cornerBeside(QPoint icon, QSize window, const QRect& screen) {
  constexpr int kAroundIcon = 32;  // the icon, and the panel around it
  constexpr int kTitleBar = 32;    // which others draw above the window
  const bool isBelow = icon.y() > screen.center().y();
  const int x = icon.x() - window.width() / 2;
  const int y =
      isBelow ? icon.y() - kAroundIcon - kTitleBar - window.height() : icon.y() + kAroundIcon;
  return cornerWithin({x, y}, window, screen);
}

QPoint likelyCorner(QSize window, const QRect& screen) {
  return {screen.left() + (screen.width() - window.width()) / 2, screen.top()};
}
