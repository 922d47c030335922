#include "tray_desktop.h"

#include <algorithm>

#include "frontends/qt/host_item.h"
#include "line_from_child.h"

namespace bench {
namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr const char* kItem = "org.kde.StatusNotifierItem";
constexpr const char* kItemPath = "/StatusNotifierItem";
constexpr const char* kMenu = "com.canonical.dbusmenu";
constexpr const char* kMenuPath = "/MenuBar";

std::size_t longestLabelOf(const HostItem& item) {
  std::size_t longest = item.label.size();
  for (const HostItem& child : item.children) longest = std::max(longest, longestLabelOf(child));
  return longest;
}

const HostItem* find(const HostItem& item, const std::string& label) {
  if (item.label == label) return &item;
  for (const HostItem& child : item.children) {
    if (const HostItem* found = find(child, label)) return found;
  }
  return nullptr;
}

}  // namespace

TrayDesktop::TrayDesktop() {
  if (display_.name().empty()) {
    problem_ = "Xvfb does not start";
    return;
  }
  startBus();
  if (address_.empty()) {
    problem_ = "dbus-daemon does not start";
    return;
  }
  showIcons();
}

void TrayDesktop::startBus() {
  LineFromChild address;
  daemon_ = std::make_unique<Child>(
      std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                               "--print-address=" + address.descriptor()},
      std::vector<std::string>{}, Child::Output::discarded);
  address_ = address.read();
}

void TrayDesktop::showIcons() {
  static const sd_bus_vtable kTable[] = {
      SD_BUS_VTABLE_START(0),
      SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", &registerItem,
                    SD_BUS_VTABLE_UNPRIVILEGED),
      SD_BUS_PROPERTY("IsStatusNotifierHostRegistered", "b", &hostIsRegistered, 0, 0),
      SD_BUS_VTABLE_END,
  };
  sd_bus* bus = nullptr;
  bool done = sd_bus_new(&bus) >= 0;
  bus_.reset(bus);
  done = done && sd_bus_set_address(bus, address_.c_str()) >= 0 &&
         sd_bus_set_bus_client(bus, 1) >= 0 && sd_bus_start(bus) >= 0 &&
         sd_bus_add_object_vtable(bus, nullptr, kWatcherPath, kWatcher, kTable, this) >= 0 &&
         sd_bus_request_name(bus, kWatcher, 0) >= 0;
  if (!done) problem_ = "the message bus does not answer";
}

std::vector<std::string> TrayDesktop::environment() const {
  return {"DISPLAY=" + display_.name(), "DBUS_SESSION_BUS_ADDRESS=" + address_,
          "WAYLAND_DISPLAY=",           "XDG_CURRENT_DESKTOP=",
          "QT_QPA_PLATFORM=",           "QT_QPA_PLATFORMTHEME="};
}

void TrayDesktop::answer() {
  while (sd_bus_process(bus_.get(), nullptr) > 0) {
  }
}

void TrayDesktop::click() {
  sd_bus_call_method_async(bus_.get(), nullptr, icon_.c_str(), kItemPath, kItem, "Activate",
                           nullptr, nullptr, "ii", 0, 0);
}

void TrayDesktop::choose(std::string label) {
  wanted_ = std::move(label);
  sd_bus_call_method_async(bus_.get(), nullptr, icon_.c_str(), kMenuPath, kMenu, "GetLayout",
                           &layoutCame, this, "iias", 0, -1, 0);
}

int TrayDesktop::layoutCame(sd_bus_message* reply, void* self, sd_bus_error*) {
  auto& desktop = *static_cast<TrayDesktop*>(self);
  std::uint32_t revision = 0;
  if (sd_bus_message_is_method_error(reply, nullptr) != 0 ||
      sd_bus_message_read(reply, "u", &revision) < 0) {
    return 0;
  }
  const HostItem menu = readHostItem(reply);
  desktop.longestLabel_ = longestLabelOf(menu);
  if (const HostItem* item = find(menu, desktop.wanted_)) {
    sd_bus_call_method_async(desktop.bus_.get(), nullptr, desktop.icon_.c_str(), kMenuPath, kMenu,
                             "Event", nullptr, nullptr, "isvu", item->id, "clicked", "i", 0, 0);
  }
  return 0;
}

int TrayDesktop::registerItem(sd_bus_message* call, void* self, sd_bus_error*) {
  const char* service = nullptr;
  sd_bus_message_read(call, "s", &service);
  static_cast<TrayDesktop*>(self)->icon_ = service;
  return sd_bus_reply_method_return(call, "");
}

int TrayDesktop::hostIsRegistered(sd_bus*, const char*, const char*, const char*,
                                  sd_bus_message* reply, void*, sd_bus_error*) {
  return sd_bus_message_append(reply, "b", 1);
}

}  // namespace bench
