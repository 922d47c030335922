#include "frontends/qt/bus/tray_host_watch.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace {

constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
/// What hosts call themselves, followed by their pid and more.
constexpr std::string_view kHostNames = "org.kde.StatusNotifierHost-";
constexpr const char* kGnomeShell = "org.gnome.Shell";
/// Plasma's service, which is the watcher beside any panel. Its hosts always have names.
constexpr const char* kPlasmasServices[] = {"org.kde.kded6", "org.kde.kded5"};

TrayHostWatch* watch(void* self) {
  return static_cast<TrayHostWatch*>(self);
}

/// Anybody on the bus can send us a signal, whatever we have subscribed to; the sender's name
/// comes from the bus and can be trusted.
bool isFrom(sd_bus_message* message, std::string_view name) {
  const char* sender = sd_bus_message_get_sender(message);
  return sender != nullptr && name == sender;
}

bool isError(sd_bus_message* reply) {
  return sd_bus_message_is_method_error(reply, nullptr) != 0;
}

/// Whether `item`, as a watcher lists it, is served on this unique bus name: watchers write the
/// name alone or with the object path, some with an "@" between them.
bool speaksOf(std::string_view item, std::string_view name) {
  if (!item.starts_with(name)) return false;
  return item.size() == name.size() || item[name.size()] == '/' || item[name.size()] == '@';
}

/// What is of interest among all names on the bus.
struct BusNames {
  bool host = false;                     // some host has a name
  const char* plasmasService = nullptr;  // the name that is there; null for none
};

BusNames namesIn(sd_bus_message* reply) {
  BusNames found;
  if (isError(reply) || sd_bus_message_enter_container(reply, 'a', "s") < 0) return found;
  const char* name = nullptr;
  while (sd_bus_message_read(reply, "s", &name) > 0) {
    if (std::string_view(name).starts_with(kHostNames)) found.host = true;
    for (const char* service : kPlasmasServices) {
      if (std::string_view(name) == service) found.plasmasService = service;
    }
  }
  return found;
}

/// Whether the list in the answer has the icon; none when there is no list in it.
std::optional<bool> lists(sd_bus_message* reply, std::string_view icon) {
  if (isError(reply) || sd_bus_message_enter_container(reply, 'v', "as") <= 0 ||
      sd_bus_message_enter_container(reply, 'a', "s") < 0) {
    return std::nullopt;
  }
  const char* item = nullptr;
  while (sd_bus_message_read(reply, "s", &item) > 0) {
    if (speaksOf(item, icon)) return true;
  }
  return false;
}

}  // namespace

TrayHostWatch::TrayHostWatch(sd_bus* bus, const TrayHostTimes& times)
    : bus_(bus), times_(times), registration_(times, [this] { lookSoon(); }) {
  const char* name = nullptr;
  if (sd_bus_get_unique_name(bus, &name) >= 0) icon_ = name;
  nextLook_.setSingleShot(true);
  connect(&nextLook_, &QTimer::timeout, this, &TrayHostWatch::look);

  const std::string watcher = std::string("'") + kWatcher + "'";
  addMatch(watcherMatch_,
           std::string("type='signal',sender='") + kBus + "',interface='" + kBus +
               "',member='NameOwnerChanged',arg0=" + watcher,
           &TrayHostWatch::ownerChanged);
  // Only whole parts of a name can be matched, and hosts' names differ within their last part.
  addMatch(hostMatch_,
           std::string("type='signal',sender='") + kBus + "',interface='" + kBus +
               "',member='NameOwnerChanged',arg0namespace='org.kde'",
           &TrayHostWatch::hostNameChanged);
  addMatch(
      signalMatch_,
      "type='signal',sender=" + watcher + ",interface=" + watcher + ",path='" + kWatcherPath + "'",
      &TrayHostWatch::watcherSignalled);
  look();
}

void TrayHostWatch::addMatch(BusSlot& slot, const std::string& rule, Handler handler) {
  sd_bus_slot* raw = nullptr;
  // There is no need to wait until the bus confirms the rule: it works in order, so the rule is in
  // force before the question that follows is answered.
  if (sd_bus_add_match_async(bus_, &raw, rule.c_str(), handler, nullptr, this) >= 0) {
    slot.reset(raw);
  }
}

int TrayHostWatch::ownerChanged(sd_bus_message* message, void* self, sd_bus_error*) {
  const char* newOwner = "";
  if (!isFrom(message, kBus) ||
      sd_bus_message_read(message, "sss", nullptr, nullptr, &newOwner) < 0) {
    return 0;
  }
  watch(self)->watcher_ = newOwner;
  watch(self)->watcherIsGone_ = *newOwner == '\0';
  watch(self)->forgetIcon();
  // The question was put to the old watcher.
  watch(self)->question_.reset();
  Q_EMIT watch(self)->watcherChanged();
  watch(self)->lookSoon();
  return 0;
}

int TrayHostWatch::hostNameChanged(sd_bus_message* message, void* self, sd_bus_error*) {
  const char* name = "";
  if (isFrom(message, kBus) && sd_bus_message_read(message, "s", &name) >= 0 &&
      std::string_view(name).starts_with(kHostNames)) {
    watch(self)->lookSoon();
  }
  return 0;
}

int TrayHostWatch::watcherSignalled(sd_bus_message* message, void* self, sd_bus_error*) {
  // Whatever the signal says, the present state is asked for.
  if (isFrom(message, watch(self)->watcher_)) watch(self)->lookSoon();
  return 0;
}

void TrayHostWatch::forgetIcon() {
  hostsHaveNames_ = false;
  registration_.forget();
}

void TrayHostWatch::lookSoon() {
  if (question_ != nullptr) {
    lookAgain_ = true;
  } else if (!nextLook_.isActive()) {
    nextLook_.start(
        static_cast<int>(std::max<qint64>(0, times_.betweenLooks - sinceLook_.elapsed())));
  }
}

void TrayHostWatch::look() {
  sinceLook_.start();
  if (watcherIsGone_) {
    settle(false);
  } else {
    ask("IsStatusNotifierHostRegistered", &TrayHostWatch::hostAnswered);
  }
}

void TrayHostWatch::finishLook() {
  question_.reset();
  if (std::exchange(lookAgain_, false)) lookSoon();
}

void TrayHostWatch::sent(int result, sd_bus_slot* question) {
  question_.reset(question);
  if (result >= 0) return;
  settle(false);
  finishLook();
}

void TrayHostWatch::ask(const char* property, Handler handler) {
  sd_bus_slot* raw = nullptr;
  const int result = sd_bus_call_method_async(bus_, &raw, kWatcher, kWatcherPath,
                                              "org.freedesktop.DBus.Properties", "Get", handler,
                                              this, "ss", kWatcher, property);
  sent(result, raw);
}

int TrayHostWatch::hostAnswered(sd_bus_message* reply, void* self, sd_bus_error*) {
  int hostIsThere = 0;
  if (!isError(reply)) {
    const char* sender = sd_bus_message_get_sender(reply);
    watch(self)->watcher_ = sender == nullptr ? "" : sender;
    if (sd_bus_message_read(reply, "v", "b", &hostIsThere) < 0) hostIsThere = 0;
  }
  if (hostIsThere == 0) {
    watch(self)->hostIsGone();
  } else {
    watch(self)->askForHosts();
  }
  return 0;
}

void TrayHostWatch::askForHosts() {
  sd_bus_slot* raw = nullptr;
  const int result = sd_bus_call_method_async(bus_, &raw, kBus, kBusPath, kBus, "ListNames",
                                              &TrayHostWatch::namesAnswered, this, "");
  sent(result, raw);
}

/// Not every host has a bus name, and some get it late. So "no host has a name" means "no host"
/// only if one had a name before, or if Plasma's service is the watcher.
int TrayHostWatch::namesAnswered(sd_bus_message* reply, void* self, sd_bus_error*) {
  const BusNames names = namesIn(reply);
  if (names.host) {
    watch(self)->hostsHaveNames_ = true;
  } else if (watch(self)->hostsHaveNames_ && !isError(reply)) {
    watch(self)->hostIsGone();
    return 0;
  } else if (names.plasmasService != nullptr) {
    watch(self)->askForOwner(names.plasmasService, &TrayHostWatch::plasmaAnswered);
    return 0;
  }
  watch(self)->seeToIcon();
  return 0;
}

int TrayHostWatch::plasmaAnswered(sd_bus_message* reply, void* self, sd_bus_error*) {
  if (watch(self)->isWatcher(reply)) {
    watch(self)->hostsHaveNames_ = true;
    watch(self)->hostIsGone();
  } else {
    watch(self)->seeToIcon();
  }
  return 0;
}

void TrayHostWatch::hostIsGone() {
  settle(false);
  finishLook();
}

/// There is a host: sees to it that it has the icon.
void TrayHostWatch::seeToIcon() {
  if (registration_.isRegistered()) {
    ask("RegisteredStatusNotifierItems", &TrayHostWatch::itemsAnswered);
  } else {
    askForOwner(kGnomeShell, &TrayHostWatch::shellAnswered);
  }
}

void TrayHostWatch::askForOwner(const char* name, Handler handler) {
  sd_bus_slot* raw = nullptr;
  const int result = sd_bus_call_method_async(bus_, &raw, kBus, kBusPath, kBus, "GetNameOwner",
                                              handler, this, "s", name);
  sent(result, raw);
}

/// Whether the owner in the answer is the watcher.
bool TrayHostWatch::isWatcher(sd_bus_message* reply) const {
  const char* owner = "";
  return !isError(reply) && sd_bus_message_read(reply, "s", &owner) >= 0 && watcher_ == owner;
}

/// GNOME's extension runs inside the shell, so its watcher has the shell's bus name.
int TrayHostWatch::shellAnswered(sd_bus_message* reply, void* self, sd_bus_error*) {
  const TrayHostKind kind =
      watch(self)->isWatcher(reply) ? TrayHostKind::gnomeShell : TrayHostKind::usual;
  if (std::exchange(watch(self)->hostKind_, kind) != kind) Q_EMIT watch(self)->changed();
  watch(self)->registerIcon();
  return 0;
}

/// Registers the icon by its unique bus name. If it had a well-known name, GNOME's extension would
/// wait for that as well, and could lose what it had already read of the icon.
void TrayHostWatch::registerIcon() {
  sd_bus_slot* raw = nullptr;
  const int result = sd_bus_call_method_async(
      bus_, &raw, kWatcher, kWatcherPath, kWatcher, "RegisterStatusNotifierItem",
      &TrayHostWatch::iconRegistered, this, "s", icon_.c_str());
  sent(result, raw);
}

int TrayHostWatch::iconRegistered(sd_bus_message* reply, void* self, sd_bus_error*) {
  TrayRegistration& registration = watch(self)->registration_;
  if (isError(reply)) {
    registration.refused();
    watch(self)->settle(false);
    watch(self)->finishLook();
    return 0;
  }
  registration.accepted();
  if (!registration.isOverdue()) watch(self)->settle(true);
  watch(self)->ask("RegisteredStatusNotifierItems", &TrayHostWatch::itemsAnswered);
  return 0;
}

int TrayHostWatch::itemsAnswered(sd_bus_message* reply, void* self, sd_bus_error*) {
  // Where a watcher keeps no such list, we have to assume that it has the icon.
  if (lists(reply, watch(self)->icon_).value_or(true)) {
    watch(self)->iconIsListed();
  } else {
    watch(self)->iconIsMissing();
  }
  watch(self)->finishLook();
  return 0;
}

void TrayHostWatch::iconIsListed() {
  registration_.listed();
  settle(true);
}

void TrayHostWatch::iconIsMissing() {
  registration_.missing();
  if (registration_.isOverdue()) settle(false);
}

void TrayHostWatch::settle(bool shown) {
  if (decided_ && hostShowsIcon_ == shown) return;
  decided_ = true;
  hostShowsIcon_ = shown;
  Q_EMIT changed();
}
