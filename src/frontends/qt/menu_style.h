#pragma once

#include <QProxyStyle>
#include <string_view>

class QFont;
class QMenu;

/// The user's style, except that a menu that is too high scrolls instead of being split into
/// columns.
class MenuStyle : public QProxyStyle {
 public:
  /// Applies this style to `menu`, and makes its disabled items, which hold most of the
  /// information, easy to read.
  void dress(QMenu& menu);

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

/// Whether this font or one that stands in for it has this glyph, and no empty box is drawn for it.
bool isDrawn(std::string_view glyph, const QFont& font);
