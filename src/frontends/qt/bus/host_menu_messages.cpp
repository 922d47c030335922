#include "frontends/qt/bus/host_menu_messages.h"

#include <algorithm>
#include <variant>

#include "frontends/qt/dot_icon.h"

namespace HostMenuMessages {

namespace {

using Node = ExportedMenu::Node;

struct Property {
  const char* name;
  std::variant<std::string, bool, QByteArray> value;
};

/// The properties that differ from the defaults, which describe an item with a text, without a
/// picture, that can be chosen.
std::vector<Property> properties(const Node& node) {
  std::vector<Property> all;
  const MenuItem* item = node.item.get();
  if (item != nullptr && item->kind == MenuItem::Kind::separator) {
    all.push_back({"type", std::string("separator")});
    return all;
  }
  if (!node.label.empty()) all.push_back({"label", node.label});
  if (!node.accessibleText.empty()) all.push_back({"accessible-desc", node.accessibleText});
  if (item != nullptr && !item->enabled) all.push_back({"enabled", false});
  if (item != nullptr && item->dot) {
    constexpr int kPixelsPerPoint = 2;  // hosts scale it down well
    all.push_back({"icon-data", dotPng(*item->dot, kPixelsPerPoint)});
  }
  if (!node.children.empty()) all.push_back({"children-display", std::string("submenu")});
  return all;
}

struct AppendValue {
  sd_bus_message* message;

  int operator()(const std::string& text) const {
    return sd_bus_message_append(message, "v", "s", text.c_str());
  }
  int operator()(bool flag) const { return sd_bus_message_append(message, "v", "b", flag ? 1 : 0); }
  int operator()(const QByteArray& bytes) const {
    int result = sd_bus_message_open_container(message, 'v', "ay");
    if (result >= 0) {
      result = sd_bus_message_append_array(message, 'y', bytes.constData(),
                                           static_cast<std::size_t>(bytes.size()));
    }
    return result < 0 ? result : sd_bus_message_close_container(message);
  }
};

bool wanted(const char* name, const PropertyNames& names) {
  return names.empty() || std::ranges::find(names, name) != names.end();
}

int appendDictionary(sd_bus_message* message, const Node& node, const PropertyNames& names) {
  int result = sd_bus_message_open_container(message, 'a', "{sv}");
  for (const Property& property : properties(node)) {
    if (!wanted(property.name, names)) continue;
    if (result >= 0) result = sd_bus_message_open_container(message, 'e', "sv");
    if (result >= 0) result = sd_bus_message_append(message, "s", property.name);
    if (result >= 0) result = std::visit(AppendValue{message}, property.value);
    if (result >= 0) result = sd_bus_message_close_container(message);
  }
  return result < 0 ? result : sd_bus_message_close_container(message);
}

}  // namespace

int readNames(sd_bus_message* call, PropertyNames& names) {
  int result = sd_bus_message_enter_container(call, 'a', "s");
  const char* name = nullptr;
  while (result >= 0 && (result = sd_bus_message_read(call, "s", &name)) > 0) {
    names.emplace_back(name);
  }
  return result < 0 ? result : sd_bus_message_exit_container(call);
}

int readIds(sd_bus_message* call, std::vector<int>& ids) {
  int result = sd_bus_message_enter_container(call, 'a', "i");
  int id = 0;
  while (result >= 0 && (result = sd_bus_message_read(call, "i", &id)) > 0) ids.push_back(id);
  return result < 0 ? result : sd_bus_message_exit_container(call);
}

int appendLayout(sd_bus_message* message, const Node& node, int depth, const PropertyNames& names) {
  int result = sd_bus_message_open_container(message, 'r', "ia{sv}av");
  if (result >= 0) result = sd_bus_message_append(message, "i", node.id);
  if (result >= 0) result = appendDictionary(message, node, names);
  if (result >= 0) result = sd_bus_message_open_container(message, 'a', "v");
  if (depth != 0) {
    for (const Node& child : node.children) {
      if (result >= 0) result = sd_bus_message_open_container(message, 'v', "(ia{sv}av)");
      if (result >= 0) result = appendLayout(message, child, depth - 1, names);
      if (result >= 0) result = sd_bus_message_close_container(message);
    }
  }
  if (result >= 0) result = sd_bus_message_close_container(message);
  return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendProperties(sd_bus_message* message, const Node& node, const PropertyNames& names) {
  int result = sd_bus_message_open_container(message, 'r', "ia{sv}");
  if (result >= 0) result = sd_bus_message_append(message, "i", node.id);
  if (result >= 0) result = appendDictionary(message, node, names);
  return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendProperty(sd_bus_message* message, const Node& node, const std::string& name) {
  for (const Property& property : properties(node)) {
    if (property.name == name) return std::visit(AppendValue{message}, property.value);
  }
  return sd_bus_message_append(message, "v", "s", "");
}

}  // namespace HostMenuMessages
