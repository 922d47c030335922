#pragma once

#include <QProxyStyle>

class QMenu;

/// How menus look: the user's style, but a menu that is too high scrolls instead of breaking
/// into columns.
class MenuStyle : public QProxyStyle {
 public:
  /// Makes `menu` look like that, and its disabled items, which tell most, easy to read.
  void dress(QMenu& menu);

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};
