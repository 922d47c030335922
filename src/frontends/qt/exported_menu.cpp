#include "frontends/qt/exported_menu.h"

#include <QByteArray>
#include <QByteArrayList>
#include <algorithm>
#include <utility>

#include "frontends/qt/menu_label.h"
#include "text/split.h"
#include "ui/strip_text.h"

namespace {

using Node = ExportedMenu::Node;

void describeStrip(Node& node, const MemoryPressureView& strip) {
  node.label = stripLabel(strip);
  node.accessibleText = stripDescription(strip);
}

bool looksTheSame(const Node& a, const Node& b) {
  return a.label == b.label && a.accessibleText == b.accessibleText &&
         a.item->enabled == b.item->enabled && a.item->dot == b.item->dot;
}

/// Notes the items whose text differs between two versions of a submenu; false when the items
/// themselves differ.
bool compare(const std::vector<Node>& before, const std::vector<Node>& after,
             std::vector<int>& relabelled) {
  if (before.size() != after.size()) return false;
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (before[i].id != after[i].id) return false;
    if (!looksTheSame(before[i], after[i])) relabelled.push_back(after[i].id);
    if (!compare(before[i].children, after[i].children, relabelled)) return false;
  }
  return true;
}

const Node* findIn(const Node& node, int id) {
  if (node.id == id) return &node;
  for (const Node& child : node.children) {
    if (const Node* found = findIn(child, id)) return found;
  }
  return nullptr;
}

}  // namespace

ExportedMenu::Change ExportedMenu::show(std::shared_ptr<const Menu> menu) {
  whole_ = std::move(menu);
  if (host_ == TrayHostKind::usual) return put(whole_);
  return put(std::make_shared<const Menu>(ShortMenu::of(*whole_, room_)));
}

ExportedMenu::Change ExportedMenu::setHost(TrayHostKind host) {
  if (std::exchange(host_, host) == host || !whole_) return {};
  return show(whole_);
}

ExportedMenu::Change ExportedMenu::setRoom(ShortMenu::Room room) {
  if (std::exchange(room_, room) == room || host_ == TrayHostKind::usual || !whole_) return {};
  return show(whole_);
}

ExportedMenu::Change ExportedMenu::put(const std::shared_ptr<const Menu>& shown) {
  Ids ids;
  std::vector<Node> children = nodes({shown, &shown->items}, kRootId, ids);

  Change change;
  change.layout = !compare(root_.children, children, change.relabelled);
  if (change.layout) change.relabelled.clear();

  root_.children = std::move(children);
  ids_ = std::move(ids);
  return change;
}

ExportedMenu::Change ExportedMenu::showStrip(const MemoryPressureView& strip) {
  for (Node& node : root_.children) {
    if (node.item->kind != MenuItem::Kind::strip) continue;
    const Node before = node;
    describeStrip(node, strip);
    if (!looksTheSame(before, node)) return {.relabelled = {node.id}};
  }
  return {};
}

ExportedMenu::Change ExportedMenu::showTitles() {
  Change change;
  takeTitles(root_.children, change);
  return change;
}

void ExportedMenu::takeTitles(std::vector<Node>& nodes, Change& change) const {
  for (Node& node : nodes) {
    takeTitles(node.children, change);
    if (!node.item->live) continue;
    std::string label = hostMenuLabel(shownTitle(*node.item), host_);
    if (label != node.label) change.relabelled.push_back(node.id);
    node.label = std::move(label);
  }
}

std::optional<int> ExportedMenu::mostUnscrolled(int screenLines, const QByteArray& desktops) {
  constexpr int kRow = 28;  // 26 in Plasma's font
  const std::string names = desktops.toStdString();
  if (!text::holdsPart(names, ':', "KDE") && !text::holdsPart(names, ':', "LXQt")) {
    return std::nullopt;
  }
  return screenLines / kRow;
}

bool ExportedMenu::staysStill() const {
  if (!mostUnscrolled_) return false;
  const auto isHigh = [](const Node& node) { return node.item->kind != MenuItem::Kind::separator; };
  return std::ranges::count_if(root_.children, isHigh) > *mostUnscrolled_;
}

const Node* ExportedMenu::find(int id) const {
  return findIn(root_, id);
}

std::vector<Node> ExportedMenu::nodes(const std::shared_ptr<const std::vector<MenuItem>>& items,
                                      int parent, Ids& ids) {
  std::vector<ItemKey> keys = itemKeys(*items);
  std::vector<Node> result;
  for (std::size_t i = 0; i < items->size(); ++i) {
    std::pair key{parent, std::move(keys[i])};
    const auto known = ids_.find(key);
    Node& node = result.emplace_back();
    node.id = known != ids_.end() ? known->second : ++lastId_;
    const MenuItem& item = (*items)[i];
    node.item = {items, &item};
    if (item.strip) {
      describeStrip(node, *item.strip);
    } else {
      node.label = hostMenuLabel(shownTitle(item), host_);
    }
    if (item.action != Action::openRow) node.children = nodes({items, &item.submenu}, node.id, ids);
    ids.emplace(std::move(key), node.id);
  }
  return result;
}
