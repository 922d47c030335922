#include "frontends/qt/desktop/tray_host.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>

#include "tools/eventually.h"

namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr const char* kItem = "org.kde.StatusNotifierItem";
constexpr const char* kItemPath = "/StatusNotifierItem";
constexpr const char* kMenu = "com.canonical.dbusmenu";
constexpr const char* kMenuPath = "/MenuBar";

}  // namespace

struct WatcherVtable {
  static TrayHost& host(void* data) { return *static_cast<TrayHost*>(data); }

  static int registerItem(sd_bus_message* call, void* data, sd_bus_error*) {
    const char* service = nullptr;
    sd_bus_message_read(call, "s", &service);
    host(data).icon_ = service;
    ++host(data).registrations_;
    if (host(data).list_ == TrayHost::List::kept) {
      host(data).items_.push_back(host(data).icon_ + kItemPath);
    }
    return sd_bus_reply_method_return(call, "");
  }
  static int hostRegistered(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                            void* data, sd_bus_error*) {
    ++host(data).looks_;
    return sd_bus_message_append(reply, "b", host(data).hostRegistered_ ? 1 : 0);
  }
  static int items(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                   void* data, sd_bus_error*) {
    if (host(data).list_ == TrayHost::List::forbidden) return -EACCES;
    int result = sd_bus_message_open_container(reply, 'a', "s");
    for (const std::string& item : host(data).items_) {
      if (result >= 0) result = sd_bus_message_append(reply, "s", item.c_str());
    }
    return result < 0 ? result : sd_bus_message_close_container(reply);
  }
  static const sd_bus_vtable table[];
};

const sd_bus_vtable WatcherVtable::table[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", &registerItem, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_PROPERTY("IsStatusNotifierHostRegistered", "b", &hostRegistered, 0, 0),
    SD_BUS_PROPERTY("RegisteredStatusNotifierItems", "as", &items, 0, 0),
    SD_BUS_SIGNAL("StatusNotifierItemUnregistered", "s", 0),
    SD_BUS_SIGNAL("StatusNotifierHostRegistered", "", 0),
    SD_BUS_SIGNAL("StatusNotifierHostUnregistered", "", 0),
    SD_BUS_VTABLE_END,
};

TrayHost::TrayHost(const std::string& busAddress) : bus_(connectedBus(busAddress)) {
  sd_bus_slot* raw = nullptr;
  EXPECT_GE(sd_bus_add_object_vtable(bus_.get(), &raw, kWatcherPath, kWatcher, WatcherVtable::table,
                                     this),
            0);
  watcher_.reset(raw);
}

void TrayHost::appear() {
  EXPECT_GE(sd_bus_request_name(bus_.get(), kWatcher, SD_BUS_NAME_QUEUE), 0);
}

void TrayHost::disappear() {
  EXPECT_GE(sd_bus_release_name(bus_.get(), kWatcher), 0);
  icon_.clear();
  items_.clear();
}

void TrayHost::takeName(const char* name) {
  EXPECT_GE(sd_bus_request_name(bus_.get(), name, 0), 0);
}

void TrayHost::dropIcon() {
  items_.clear();
  sd_bus_emit_signal(bus_.get(), kWatcherPath, kWatcher, "StatusNotifierItemUnregistered", "s",
                     (icon_ + kItemPath).c_str());
}

void TrayHost::signalNothing(int times) {
  for (int i = 0; i < times; ++i) {
    sd_bus_emit_signal(bus_.get(), kWatcherPath, kWatcher, "StatusNotifierHostRegistered", "");
  }
}

void TrayHost::setHostRegistered(bool registered) {
  hostRegistered_ = registered;
  sd_bus_emit_signal(bus_.get(), kWatcherPath, kWatcher,
                     registered ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered",
                     "");
}

bool TrayHost::eventually(const std::function<bool()>& done, std::chrono::microseconds moment) {
  return ::eventually(done, [this, moment] {
    while (sd_bus_process(bus_.get(), nullptr) > 0) {
    }
    sd_bus_wait(bus_.get(), static_cast<std::uint64_t>(moment.count()));
  });
}

void TrayHost::pumpFor(double seconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  eventually([end] { return std::chrono::steady_clock::now() >= end; });
}

BusMessage TrayHost::call(const std::string& destination, const char* path, const char* interface,
                          const char* member, const std::function<void(sd_bus_message*)>& fill) {
  sd_bus_message* raw = nullptr;
  sd_bus_message_new_method_call(bus_.get(), &raw, destination.c_str(), path, interface, member);
  const BusMessage request(raw);
  if (fill) fill(raw);
  constexpr std::uint64_t kPatience = 60000000;  // microseconds
  sd_bus_message* reply = nullptr;
  sd_bus_error error = {};
  EXPECT_GE(sd_bus_call(bus_.get(), raw, kPatience, &error, &reply), 0)
      << member << ": " << (error.message == nullptr ? "" : error.message);
  sd_bus_error_free(&error);
  return BusMessage(reply);
}

BusMessage TrayHost::iconProperty(const char* property) {
  return call(icon_, kItemPath, "org.freedesktop.DBus.Properties", "Get",
              [&](sd_bus_message* m) { sd_bus_message_append(m, "ss", kItem, property); });
}

std::string TrayHost::iconText(const char* property) {
  const BusMessage reply = iconProperty(property);
  const char* text = "";
  sd_bus_message_read(reply.get(), "v", "s", &text);
  return text;
}

std::string TrayHost::title() {
  return iconText("Title");
}

std::string TrayHost::status() {
  return iconText("Status");
}

std::string TrayHost::toolTip() {
  const BusMessage reply = iconProperty("ToolTip");
  const char* text = "";
  sd_bus_message_enter_container(reply.get(), 'v', "(sa(iiay)ss)");
  sd_bus_message_enter_container(reply.get(), 'r', "sa(iiay)ss");
  sd_bus_message_skip(reply.get(), "sa(iiay)");
  sd_bus_message_read(reply.get(), "s", &text);
  return text;
}

void TrayHost::activate() {
  call(icon_, kItemPath, kItem, "Activate",
       [](sd_bus_message* m) { sd_bus_message_append(m, "ii", 0, 0); });
}

HostItem TrayHost::layout() {
  const BusMessage reply = call(icon_, kMenuPath, kMenu, "GetLayout", [](sd_bus_message* m) {
    sd_bus_message_append(m, "iias", 0, -1, 0);
  });
  sd_bus_message_skip(reply.get(), "u");
  return readHostItem(reply.get());
}

std::optional<HostItem> TrayHost::processRow(int pid) {
  const std::string ending = " · pid " + std::to_string(pid);
  for (const HostItem& row : layout().children) {
    if (!row.children.empty() && row.children.front().label.ends_with(ending)) return row;
  }
  return std::nullopt;
}

void TrayHost::aboutToShow() {
  call(icon_, kMenuPath, kMenu, "AboutToShow",
       [](sd_bus_message* m) { sd_bus_message_append(m, "i", 0); });
}

void TrayHost::menuClosed() {
  event(0, "closed");
}

void TrayHost::click(const HostItem& item) {
  event(item.id, "clicked");
}

void TrayHost::event(int id, const char* kind) {
  call(icon_, kMenuPath, kMenu, "Event",
       [id, kind](sd_bus_message* m) { sd_bus_message_append(m, "isvu", id, kind, "i", 0, 0U); });
}

bool TrayHost::isOwned(const std::string& name) {
  const BusMessage reply =
      call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
           [&name](sd_bus_message* m) { sd_bus_message_append(m, "s", name.c_str()); });
  int owned = 0;
  sd_bus_message_read(reply.get(), "b", &owned);
  return owned != 0;
}

std::string TrayHost::owner(const std::string& name) {
  const BusMessage reply =
      call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetNameOwner",
           [&name](sd_bus_message* m) { sd_bus_message_append(m, "s", name.c_str()); });
  const char* owner = "";
  sd_bus_message_read(reply.get(), "s", &owner);
  return owner;
}

void sendForgedSignal(const std::string& busAddress, const std::string& destination,
                      const char* path, const char* interface, const char* member,
                      const std::vector<std::string>& arguments) {
  const BusPtr bus = connectedBus(busAddress);
  sd_bus_message* raw = nullptr;
  EXPECT_GE(sd_bus_message_new_signal(bus.get(), &raw, path, interface, member), 0);
  const BusMessage signal(raw);
  EXPECT_GE(sd_bus_message_set_destination(raw, destination.c_str()), 0);
  for (const std::string& argument : arguments) sd_bus_message_append(raw, "s", argument.c_str());
  EXPECT_GE(sd_bus_send(bus.get(), raw, nullptr), 0);
  EXPECT_GE(sd_bus_flush(bus.get()), 0);
}

const HostItem* findItem(const HostItem& menu, const std::string& label) {
  for (const HostItem& item : menu.children) {
    if (item.label == label) return &item;
  }
  return nullptr;
}
