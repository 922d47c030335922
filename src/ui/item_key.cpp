#include "ui/item_key.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <variant>

namespace {

struct ObjectName {
  std::string operator()(std::monostate) const { return {}; }
  std::string operator()(std::int32_t pid) const { return std::to_string(pid); }
  std::string operator()(const std::string& label) const { return label; }
  std::string operator()(const SharedRecord<VordaProcess>& process) const {
    return std::to_string((*process).pid);
  }
  std::string operator()(const SharedRecord<VordaLaunchAgent>& launchAgent) const {
    return (*launchAgent).plistPath;
  }
};

/// The process or launch agent that it speaks of; for an item that only opens a submenu, all
/// those that the submenu speaks of. Empty for none.
std::string about(const MenuItem& item) {
  if (item.action == Action::showMore) return {};  // its section tells it from others
  std::string name = std::visit(ObjectName{}, item.representedObject);
  if (item.process) {
    name += " process " + std::to_string(item.process->pid);
    if (item.process->identity) name += ' ' + std::to_string(*item.process->identity);
  }
  if (!name.empty()) return name;
  for (const MenuItem& child : item.submenu) {
    if (const std::string one = about(child); !one.empty()) name += '(' + one + ')';
  }
  return name;
}

std::string subjectOf(const MenuItem& item) {
  return std::to_string(static_cast<int>(item.kind)) + ' ' +
         std::to_string(static_cast<int>(item.action)) + ' ' + about(item);
}

}  // namespace

std::vector<ItemKey> itemKeys(std::span<const MenuItem> items) {
  std::vector<ItemKey> keys;
  std::map<std::pair<std::string_view, std::string>, int> seen;
  std::string_view section;
  for (const MenuItem& item : items) {
    if (item.kind == MenuItem::Kind::separator) section = {};
    if (isHeading(item)) section = item.title;
    std::string subject = subjectOf(item);
    const int place = ++seen[{section, subject}];
    keys.push_back({std::string(section), std::move(subject), place});
  }
  return keys;
}

std::optional<std::size_t> findItem(std::span<const MenuItem> items, const ItemKey& key) {
  const std::vector<ItemKey> keys = itemKeys(items);
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (keys[i] == key) return i;
    if (keys[i].subject == key.subject && !found) found = i;
  }
  return found;
}
