#include "frontends/qt/desktop_colors.h"

#include <QApplication>
#include <QPalette>

namespace {

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

/// Qt works the other colours out from the first two.
QPalette darkColors() {
  QPalette palette(QColor(0x3a, 0x3a, 0x3d), QColor(0x2b, 0x2b, 0x2e));
  palette.setColor(QPalette::Base, QColor(0x24, 0x24, 0x27));
  palette.setColor(QPalette::AlternateBase, QColor(0x2b, 0x2b, 0x2e));
  palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xa8));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

QPalette lightColors() {
  QPalette palette(QColor(0xef, 0xef, 0xef), QColor(0xf6, 0xf6, 0xf6));
  palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xa8));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

}  // namespace

void useColorScheme(ColorScheme scheme) {
  QApplication::setPalette(QPalette());  // the theme's own
  const bool dark = isDark(QApplication::palette());
  if (scheme == ColorScheme::dark && !dark) QApplication::setPalette(darkColors());
  if (scheme == ColorScheme::light && dark) QApplication::setPalette(lightColors());
}
