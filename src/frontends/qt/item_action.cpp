#include "frontends/qt/item_action.h"

#include <QMenu>
#include <utility>

#include "frontends/qt/dot_icon.h"
#include "frontends/qt/menu_label.h"
#include "frontends/qt/missing_glyphs.h"
#include "frontends/qt/strip_widget.h"

ItemAction::ItemAction(std::string key, QMenu* menu) : QWidgetAction(menu), key_(std::move(key)) {}

ItemAction::~ItemAction() {
  delete menu();
}

void ItemAction::setItem(std::shared_ptr<const MenuItem> item) {
  const bool newDot = item_ == nullptr ? item->dot.has_value() : item->dot != item_->dot;
  item_ = std::move(item);
  setSeparator(item_->kind == MenuItem::Kind::separator);
  setText(withMissingGlyphsReplaced(menuLabel(item_->title), [this](const QString& glyph) {
    return isShown(glyph, static_cast<QMenu*>(parent())->font());
  }));
  setEnabled(item_->enabled);
  if (newDot) setIcon(item_->dot ? dotIcon(*item_->dot) : QIcon());
  if (item_->strip && defaultWidget() == nullptr) setDefaultWidget(new StripWidget);
  refreshStrip();
}

void ItemAction::refreshStrip() {
  if (!item_->strip) return;
  static_cast<StripWidget*>(defaultWidget())->setStrip(item_->strip);
}
