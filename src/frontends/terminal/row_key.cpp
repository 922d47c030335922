#include "frontends/terminal/row_key.h"

namespace terminal {
namespace {

std::string sectionOf(Items items, std::size_t index) {
  std::size_t start = index;
  while (start > 0 && items[start - 1].kind != MenuItem::Kind::separator) --start;
  return items[start].title;
}

std::string launchAgentPathOf(const MenuItem& item) {
  for (const auto& entry : item.submenu) {
    if (const auto* launchAgent = std::get_if<VordaLaunchAgent>(&entry.representedObject)) {
      return launchAgent->plistPath;
    }
  }
  return {};
}

bool isSameProcess(const ProcessReference& a, const ProcessReference& b) {
  return a.pid == b.pid && (!a.identity || !b.identity || a.identity == b.identity);
}

bool isAbout(const MenuItem& item, const RowKey& key) {
  if (!isSelectable(item)) return false;
  if (key.process) return item.process && isSameProcess(*item.process, *key.process);
  if (!key.launchAgentPath.empty()) return launchAgentPathOf(item) == key.launchAgentPath;
  return key.action != Action::none && item.action == key.action;
}

}  // namespace

RowKey keyOf(Items items, std::size_t index) {
  const MenuItem& item = items[index];
  return {sectionOf(items, index), item.process, launchAgentPathOf(item), item.action};
}

std::optional<std::size_t> findRow(Items items, const RowKey& key) {
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (!isAbout(items[i], key)) continue;
    if (!found) found = i;
    if (sectionOf(items, i) == key.section) return i;
  }
  return found;
}

ItemKey keyOf(const MenuItem& item) {
  const auto* label = std::get_if<std::string>(&item.representedObject);
  return {item.action, label != nullptr ? *label : std::string()};
}

std::optional<std::size_t> findItem(Items items, const ItemKey& key) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (isSelectable(items[i]) && keyOf(items[i]) == key) return i;
  }
  return std::nullopt;
}

}  // namespace terminal
