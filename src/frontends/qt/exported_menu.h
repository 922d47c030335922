#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frontends/qt/tray_host_kind.h"
#include "ui/item_key.h"
#include "ui/memory_pressure_view.h"
#include "ui/menu.h"
#include "ui/short_menu.h"

class QByteArray;

/// The menu as a tray host draws it: items with numbers, the strip as a row of blocks; its short
/// form for a host that can't scroll. As long as the program runs, a number means the same thing,
/// and an item with another meaning gets a new number. So a click on an outdated item that the
/// host still shows never acts on anything else.
class ExportedMenu {
 public:
  static constexpr int kRootId = 0;

  struct Node {
    int id = kRootId;
    std::string label;           ///< in the host's form, with access keys escaped
    std::string accessibleText;  ///< for screen readers, where the label can't be read out; else ""
    std::shared_ptr<const MenuItem> item;  ///< nullptr for the root
    std::vector<Node> children;
  };

  /// What has changed and has to be reported to the host.
  struct Change {
    bool layout = false;          ///< other items or another order
    std::vector<int> relabelled;  ///< items with a new text
  };

  Change show(std::shared_ptr<const Menu> menu);
  /// The host that shows it from now on.
  Change setHost(TrayHostKind host);
  /// How much of a short menu the screen can show.
  Change setRoom(ShortMenu::Room room);
  Change showStrip(const MemoryPressureView& strip);
  /// Live titles have changed.
  Change showTitles();

  /// For hosts that stop scrolling an open menu once a label in it changes: how many items fit on
  /// the screen unscrolled. None for other hosts. Such are hosts made with Qt: those of KDE and
  /// LXQt, as `desktops`, which is XDG_CURRENT_DESKTOP, tells.
  static std::optional<int> mostUnscrolled(int screenLines, const QByteArray& desktops);
  void setMostUnscrolled(std::optional<int> items) { mostUnscrolled_ = items; }
  /// Whether nothing in it may change while it is open, not even a label.
  bool staysStill() const;

  TrayHostKind host() const { return host_; }
  ShortMenu::Room room() const { return room_; }
  const Node& root() const { return root_; }
  const Node* find(int id) const;

 private:
  /// The numbers of items that are shown, by their submenu's and their keys.
  using Ids = std::map<std::pair<int, ItemKey>, int>;

  void takeTitles(std::vector<Node>& nodes, Change& change) const;
  Change put(const std::shared_ptr<const Menu>& shown);
  std::vector<Node> nodes(const std::shared_ptr<const std::vector<MenuItem>>& items, int parent,
                          Ids& ids);

  TrayHostKind host_ = TrayHostKind::usual;
  ShortMenu::Room room_ = ShortMenu::Room::plenty;
  std::shared_ptr<const Menu> whole_;
  std::optional<int> mostUnscrolled_;
  Node root_;
  Ids ids_;
  int lastId_ = kRootId;
};
