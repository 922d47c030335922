#include "frontends/qt/host_item.h"

#include <map>
#include <string_view>

void readHostItemProperty(sd_bus_message* message, HostItem& item) {
  const char* name = nullptr;
  const char* contents = nullptr;
  const char* text = nullptr;
  sd_bus_message_read(message, "s", &name);
  sd_bus_message_peek_type(message, nullptr, &contents);
  if (std::string_view(contents) == "s") {
    sd_bus_message_read(message, "v", "s", &text);
    const std::map<std::string_view, std::string*> texts{
        {"label", &item.label}, {"type", &item.type}, {"accessible-desc", &item.accessible}};
    if (texts.contains(name)) *texts.at(name) = text;
  } else if (std::string_view(name) == "enabled") {
    int enabled = 0;
    sd_bus_message_read(message, "v", "b", &enabled);
    item.enabled = enabled != 0;
  } else {
    const void* bytes = nullptr;
    sd_bus_message_enter_container(message, 'v', "ay");
    sd_bus_message_read_array(message, 'y', &bytes, &item.iconBytes);
    sd_bus_message_exit_container(message);
  }
}

HostItem readHostItem(sd_bus_message* message) {
  HostItem item;
  sd_bus_message_enter_container(message, 'r', "ia{sv}av");
  sd_bus_message_read(message, "i", &item.id);
  sd_bus_message_enter_container(message, 'a', "{sv}");
  while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
    readHostItemProperty(message, item);
    sd_bus_message_exit_container(message);
  }
  sd_bus_message_exit_container(message);
  sd_bus_message_enter_container(message, 'a', "v");
  while (sd_bus_message_enter_container(message, 'v', "(ia{sv}av)") > 0) {
    item.children.push_back(readHostItem(message));
    sd_bus_message_exit_container(message);
  }
  sd_bus_message_exit_container(message);
  sd_bus_message_exit_container(message);
  return item;
}
