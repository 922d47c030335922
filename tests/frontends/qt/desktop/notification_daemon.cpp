#include "frontends/qt/desktop/notification_daemon.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "frontends/qt/desktop/connected_bus.h"

namespace {

constexpr const char* kName = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";
constexpr std::uint32_t kFirstId = 101;

void readActions(sd_bus_message* call, std::vector<std::string>& actions) {
  sd_bus_message_enter_container(call, 'a', "s");
  const char* word = nullptr;
  while (sd_bus_message_read(call, "s", &word) > 0) actions.emplace_back(word);
  sd_bus_message_exit_container(call);
}

void readHints(sd_bus_message* call, NotificationDaemon::Shown& shown) {
  sd_bus_message_enter_container(call, 'a', "{sv}");
  while (sd_bus_message_enter_container(call, 'e', "sv") > 0) {
    const char* key = "";
    sd_bus_message_read(call, "s", &key);
    if (std::string(key) == "urgency") {
      std::uint8_t urgency = 0;
      sd_bus_message_read(call, "v", "y", &urgency);
      shown.urgency = urgency;
    } else {
      const char* text = "";
      sd_bus_message_read(call, "v", "s", &text);
      if (std::string(key) == "desktop-entry") shown.desktopEntry = text;
    }
    sd_bus_message_exit_container(call);
  }
  sd_bus_message_exit_container(call);
}

}  // namespace

struct NotificationVtable {
  static int notify(sd_bus_message* call, void* data, sd_bus_error*) {
    auto& daemon = *static_cast<NotificationDaemon*>(data);
    if (daemon.refuses_) {
      ++daemon.refusals_;
      return -EACCES;
    }
    NotificationDaemon::Shown shown;
    const char* program = "";
    const char* icon = "";
    const char* summary = "";
    const char* body = "";
    sd_bus_message_read(call, "susss", &program, &shown.replaces, &icon, &summary, &body);
    shown.program = program;
    shown.summary = summary;
    shown.body = body;
    readActions(call, shown.actions);
    readHints(call, shown);
    daemon.shown_.push_back(shown);
    const auto next = kFirstId + static_cast<std::uint32_t>(daemon.shown_.size()) - 1;
    return sd_bus_reply_method_return(call, "u", shown.replaces != 0 ? shown.replaces : next);
  }
  static const sd_bus_vtable table[];
};

const sd_bus_vtable NotificationVtable::table[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Notify", "susssasa{sv}i", "u", &notify, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("ActivationToken", "us", 0),
    SD_BUS_SIGNAL("ActionInvoked", "us", 0),
    SD_BUS_SIGNAL("NotificationClosed", "uu", 0),
    SD_BUS_VTABLE_END,
};

NotificationDaemon::NotificationDaemon(const std::string& busAddress)
    : bus_(connectedBus(busAddress)) {
  sd_bus_slot* raw = nullptr;
  EXPECT_GE(
      sd_bus_add_object_vtable(bus_.get(), &raw, kPath, kName, NotificationVtable::table, this), 0);
  object_.reset(raw);
  EXPECT_GE(sd_bus_request_name(bus_.get(), kName, 0), 0);
}

void NotificationDaemon::process() {
  while (sd_bus_process(bus_.get(), nullptr) > 0) {
  }
}

void NotificationDaemon::act(std::uint32_t id, const char* action) {
  EXPECT_GE(sd_bus_emit_signal(bus_.get(), kPath, kName, "ActionInvoked", "us", id, action), 0);
}

void NotificationDaemon::giveToken(std::uint32_t id, const char* token) {
  EXPECT_GE(sd_bus_emit_signal(bus_.get(), kPath, kName, "ActivationToken", "us", id, token), 0);
}

void NotificationDaemon::close(std::uint32_t id) {
  EXPECT_GE(sd_bus_emit_signal(bus_.get(), kPath, kName, "NotificationClosed", "uu", id, 2U), 0);
}
