#pragma once

#include <QWidgetAction>
#include <memory>
#include <string>

#include "ui/menu.h"

class QMenu;

/// One item in a QMenu. Its meaning never changes; its text may. The strip's item holds the strip
/// as a widget.
class ItemAction : public QWidgetAction {
 public:
  ItemAction(std::string key, QMenu* menu);
  ~ItemAction() override;

  const std::string& key() const { return key_; }

  /// Shows `item`, which means the same as what was shown before.
  void setItem(std::shared_ptr<const MenuItem> item);

  /// Draws the strip anew, if this is its item.
  void refreshStrip();

  const std::shared_ptr<const MenuItem>& item() const { return item_; }

 private:
  std::string key_;
  std::shared_ptr<const MenuItem> item_;
};
