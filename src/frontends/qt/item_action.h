#pragma once

#include <QWidgetAction>
#include <string>

#include "frontends/qt/menu_snapshot.h"

class QMenu;

/// One item in a QMenu. What it means never changes; what it says may. The strip's item
/// holds the strip as a widget.
class ItemAction : public QWidgetAction {
 public:
  ItemAction(std::string key, QMenu* menu);
  ~ItemAction() override;

  const std::string& key() const { return key_; }

  /// Shows `item` of `menu`, which means the same as what was shown before.
  void setItem(const MenuItem& item, const MenuSnapshot& menu);

  /// Draws the strip anew, if this is its item.
  void refreshStrip();

  const MenuItem& item() const { return *item_; }
  const MenuSnapshot& snapshot() const { return menu_; }

 private:
  std::string key_;
  MenuSnapshot menu_;
  const MenuItem* item_ = nullptr;
};
