#include "frontends/qt/bus/tray_host_watch.h"

#include <utility>

namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";

TrayHostWatch* watch(void* self) {
  return static_cast<TrayHostWatch*>(self);
}

}  // namespace

TrayHostWatch::TrayHostWatch(sd_bus* bus, std::string serviceName)
    : bus_(bus), serviceName_(std::move(serviceName)) {
  const std::string watcher = std::string("'") + kWatcher + "'";
  addMatch(watcherMatch_,
           "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0=" + watcher,
           &TrayHostWatch::watcherChanged);
  addMatch(hostsMatch_, "type='signal',interface=" + watcher + ",path='" + kWatcherPath + "'",
           &TrayHostWatch::hostsChanged);
  askForHost();
}

void TrayHostWatch::addMatch(BusSlot& slot, const std::string& rule,
                             sd_bus_message_handler_t handler) {
  sd_bus_slot* raw = nullptr;
  // Not waiting for the bus to confirm the rule: it answers in order, so the rule stands
  // before the question that follows is answered.
  if (sd_bus_add_match_async(bus_, &raw, rule.c_str(), handler, nullptr, this) >= 0) {
    slot.reset(raw);
  }
}

void TrayHostWatch::askForHost() {
  sd_bus_slot* raw = nullptr;
  const int sent = sd_bus_call_method_async(
      bus_, &raw, kWatcher, kWatcherPath, "org.freedesktop.DBus.Properties", "Get",
      &TrayHostWatch::hostAnswered, this, "ss", kWatcher, "IsStatusNotifierHostRegistered");
  question_.reset(raw);
  if (sent < 0) settle(false);
}

int TrayHostWatch::hostAnswered(sd_bus_message* reply, void* self, sd_bus_error*) {
  int hostIsThere = 0;
  if (sd_bus_message_is_method_error(reply, nullptr) != 0 ||
      sd_bus_message_read(reply, "v", "b", &hostIsThere) < 0) {
    hostIsThere = 0;
  }
  if (hostIsThere == 0) {
    watch(self)->settle(false);
  } else if (watch(self)->registered_) {
    watch(self)->settle(true);
  } else {
    watch(self)->registerIcon();
  }
  return 0;
}

void TrayHostWatch::registerIcon() {
  sd_bus_slot* raw = nullptr;
  const int sent = sd_bus_call_method_async(
      bus_, &raw, kWatcher, kWatcherPath, kWatcher, "RegisterStatusNotifierItem",
      &TrayHostWatch::iconRegistered, this, "s", serviceName_.c_str());
  question_.reset(raw);
  if (sent < 0) settle(false);
}

int TrayHostWatch::iconRegistered(sd_bus_message* reply, void* self, sd_bus_error*) {
  watch(self)->registered_ = sd_bus_message_is_method_error(reply, nullptr) == 0;
  watch(self)->settle(watch(self)->registered_);
  return 0;
}

void TrayHostWatch::settle(bool shown) {
  if (decided_ && hostShowsIcon_ == shown) return;
  decided_ = true;
  hostShowsIcon_ = shown;
  Q_EMIT changed();
}

int TrayHostWatch::watcherChanged(sd_bus_message* message, void* self, sd_bus_error*) {
  const char* newOwner = "";
  if (sd_bus_message_read(message, "sss", nullptr, nullptr, &newOwner) < 0) return 0;
  watch(self)->registered_ = false;
  if (*newOwner == '\0') {
    watch(self)->question_.reset();
    watch(self)->settle(false);
  } else {
    watch(self)->askForHost();
  }
  return 0;
}

int TrayHostWatch::hostsChanged(sd_bus_message* message, void* self, sd_bus_error*) {
  if (sd_bus_message_is_signal(message, kWatcher, "StatusNotifierHostRegistered") > 0 ||
      sd_bus_message_is_signal(message, kWatcher, "StatusNotifierHostUnregistered") > 0) {
    watch(self)->askForHost();
  }
  return 0;
}
