#include "frontends/qt/menu_style.h"

#include <QFontInfo>
#include <QMenu>
#include <utility>

namespace {

/// The share of the text's colour in a disabled item's; the rest is the background's.
constexpr float kDisabledStrength = 0.65F;

QColor mixed(const QColor& text, const QColor& ground) {
  const auto mix = [](float a, float b) { return b + (a - b) * kDisabledStrength; };
  return QColor::fromRgbF(mix(text.redF(), ground.redF()), mix(text.greenF(), ground.greenF()),
                          mix(text.blueF(), ground.blueF()));
}

QPalette withReadableDisabledText(QPalette palette) {
  for (const auto& [text, ground] : {std::pair{QPalette::Text, QPalette::Base},
                                     std::pair{QPalette::WindowText, QPalette::Window},
                                     std::pair{QPalette::ButtonText, QPalette::Window}}) {
    palette.setColor(
        QPalette::Disabled, text,
        mixed(palette.color(QPalette::Active, text), palette.color(QPalette::Active, ground)));
  }
  return palette;
}

/// Coloured glyphs where a font has them: the lock is hard to make out in one colour.
QFont withEmoji(QFont font) {
  // By its real name: an alias would yield to the glyphs' font even for digits.
  font.setFamilies({QFontInfo(font).family(), "Noto Color Emoji"});
  return font;
}

}  // namespace

void MenuStyle::dress(QMenu& menu) {
  menu.setStyle(this);
  menu.setPalette(withReadableDisabledText(menu.palette()));
  menu.setFont(withEmoji(menu.font()));
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
  if (hint == SH_Menu_Scrollable) return 1;
  if (hint == SH_EtchDisabledText) return 0;
  return QProxyStyle::styleHint(hint, option, widget, returned);
}
