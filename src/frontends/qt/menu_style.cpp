#include "frontends/qt/menu_style.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QIcon>
#include <QMenu>
#include <QPixmap>
#include <QStyleOption>
#include <QTextLayout>
#include <algorithm>
#include <utility>

#include "frontends/qt/desktop_colors.h"
#include "frontends/qt/qt_text.h"

namespace {

/// The share of the text's colour in a disabled item's; the rest is the background's.
constexpr float kDisabledStrength = 0.65F;

QColor mixed(const QColor& text, const QColor& ground) {
  const auto mix = [](float a, float b) { return b + (a - b) * kDisabledStrength; };
  return QColor::fromRgbF(mix(text.redF(), ground.redF()), mix(text.greenF(), ground.greenF()),
                          mix(text.blueF(), ground.blueF()));
}

/// With high contrast, disabled items, which hold most of the information, look as all others.
QPalette withReadableDisabledText(QPalette palette) {
  if (areOfHighContrast(palette)) return palette;
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

QIcon blankIcon(int size) {
  QPixmap nothing(size, size);
  nothing.fill(Qt::transparent);
  return nothing;
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
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (type != CT_MenuItem || item == nullptr ||
      item->menuItemType == QStyleOptionMenuItem::Separator) {
    return QProxyStyle::sizeFromContents(type, option, contents, widget);
  }
  const int icon = pixelMetric(PM_SmallIconSize, option, widget);
  QSize size = contents;
  size.setHeight(std::max(QFontMetrics(item->font).height(), icon));
  QSize row = QProxyStyle::sizeFromContents(type, option, size, widget);
  // As high as with a dot: styles give an icon room of its own.
  QStyleOptionMenuItem withDot = *item;
  withDot.icon = blankIcon(icon);
  row.setHeight(QProxyStyle::sizeFromContents(type, &withDot, size, widget).height());
  return row;
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
