#pragma once

#include <QProxyStyle>
#include <string_view>

class QFont;
class QMenu;

/// The user's style, except that a menu that is too high scrolls instead of being split into
/// columns, and that all rows have one height, whatever glyphs stand in them.
class MenuStyle : public QProxyStyle {
 public:
  /// Applies this style to `menu`, and makes its disabled items, which hold most of the
  /// information, easy to read; again when the desktop's colours change.
  void dress(QMenu& menu);

  /// Whether keys reach items, too, from which nothing can be chosen.
  void letKeysReachAll(bool all) { keysReachAll_ = all; }

  bool eventFilter(QObject* watched, QEvent* event) override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;

 private:
  bool keysReachAll_ = false;
};

/// Whether this font or one that stands in for it has this glyph, and no empty box is drawn for it.
bool isDrawn(std::string_view glyph, const QFont& font);
