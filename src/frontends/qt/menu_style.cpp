#include "frontends/qt/menu_style.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QMenu>
#include <QStyleOption>
#include <QTextLayout>
#include <algorithm>
#include <utility>

#include "frontends/qt/qt_text.h"

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
  menu.installEventFilter(this);
}

bool MenuStyle::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) {
    static_cast<QMenu*>(watched)->setPalette(
        withReadableDisabledText(QApplication::palette("QMenu")));
  }
  return false;
}

QSize MenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                  const QSize& contents, const QWidget* widget) const {
  QSize size = contents;
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (type == CT_MenuItem && item != nullptr &&
      item->menuItemType != QStyleOptionMenuItem::Separator) {
    size.setHeight(
        std::max(QFontMetrics(item->font).height(), pixelMetric(PM_SmallIconSize, option, widget)));
  }
  return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
  if (hint == SH_Menu_Scrollable) return 1;
  if (hint == SH_Menu_AllowActiveAndDisabled) return keysReachAll_ ? 1 : 0;
  if (hint == SH_EtchDisabledText) return 0;
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

bool isDrawn(std::string_view glyph, const QFont& font) {
  const QString text = toQString(glyph);
  // Mostly the font itself has it, and that is told fast.
  const QList<uint> characters = text.toUcs4();
  if (characters.size() == 1 && QFontMetrics(font).inFontUcs4(characters.front())) return true;
  QTextLayout layout(text, font);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  for (const QGlyphRun& run : layout.glyphRuns()) {
    if (run.glyphIndexes().contains(0)) return false;
  }
  return true;
}
