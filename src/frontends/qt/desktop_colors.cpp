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

/// Nothing is grey, and what is chosen differs in both its colours.
QPalette contrastColors(bool dark) {
  const QColor ground = dark ? Qt::black : Qt::white;
  const QColor text = dark ? Qt::white : Qt::black;
  QPalette palette(ground, ground);
  for (const auto role : {QPalette::Window, QPalette::Base, QPalette::AlternateBase,
                          QPalette::Button, QPalette::ToolTipBase}) {
    palette.setColor(role, ground);
  }
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                          QPalette::ToolTipText, QPalette::PlaceholderText}) {
    palette.setColor(role, text);
  }
  palette.setColor(QPalette::Highlight, dark ? QColor(0xff, 0xe0, 0x00) : QColor(0x00, 0x00, 0x8b));
  palette.setColor(QPalette::HighlightedText, ground);
  return palette;
}

}  // namespace

void useColors(const Appearance& appearance, const std::optional<QPalette>& chosen) {
  QApplication::setPalette(chosen.value_or(QPalette()));  // else the theme's own
  if (chosen) return;
  const bool isDarkByItself = isDark(QApplication::palette());
  const bool dark = appearance.colors == Appearance::Colors::noPreference
                        ? isDarkByItself
                        : appearance.colors == Appearance::Colors::dark;
  if (appearance.highContrast) {
    QApplication::setPalette(contrastColors(dark));
  } else if (dark != isDarkByItself) {
    QApplication::setPalette(dark ? darkColors() : lightColors());
  }
}

bool areOfHighContrast(const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Active, QPalette::Window);
  return palette == contrastColors(ground == Qt::black);
}
