#include "frontends/qt/menu_keys.h"

#include <cstdint>
#include <unordered_map>
#include <variant>

namespace {

struct SubjectKey {
  std::string operator()(std::monostate) const { return {}; }
  std::string operator()(std::int32_t pid) const { return std::to_string(pid); }
  std::string operator()(const std::string& label) const { return label; }
  std::string operator()(const VordaProcess& process) const { return std::to_string(process.pid); }
  std::string operator()(const VordaLaunchAgent& launchAgent) const {
    return launchAgent.plistPath;
  }
};

/// Two items with the same meaning have the same one.
std::string meaning(const MenuItem& item) {
  std::string key = std::to_string(static_cast<int>(item.kind)) + ' ' +
                    std::to_string(static_cast<int>(item.action)) + ' ' +
                    std::visit(SubjectKey{}, item.representedObject);
  if (item.process) {
    key += " process " + std::to_string(item.process->pid);
    if (item.process->identity) key += ' ' + std::to_string(*item.process->identity);
  }
  // A row that only opens a submenu means what its items mean.
  for (const MenuItem& child : item.submenu) {
    if (child.action != Action::none) key += " (" + meaning(child) + ')';
  }
  return key;
}

}  // namespace

std::vector<std::string> menuKeys(const std::vector<MenuItem>& items) {
  std::vector<std::string> keys;
  std::unordered_map<std::string, int> seen;
  for (const MenuItem& item : items) {
    const std::string key = meaning(item);
    keys.push_back(key + " #" + std::to_string(++seen[key]));
  }
  return keys;
}
