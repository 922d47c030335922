#include "frontends/qt/bus/notifications.h"

#include <string_view>

#include "frontends/qt/bus/activation_token.h"

namespace {

constexpr const char* kService = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";
constexpr const char* kDesktopEntry = "vorda";
constexpr const char* kDefaultAction = "default";  // a click on the notification itself

BusSlot matchSignal(sd_bus* bus, const char* member, sd_bus_message_handler_t handler, void* self) {
  const std::string rule = std::string("type='signal',sender='") + kService + "',path='" + kPath +
                           "',interface='" + kService + "',member='" + member + "'";
  sd_bus_slot* raw = nullptr;
  if (sd_bus_add_match_async(bus, &raw, rule.c_str(), handler, nullptr, self) < 0) return nullptr;
  return BusSlot(raw);
}

}  // namespace

std::string asMarkup(const std::string& text) {
  std::string markup;
  for (const char c : text) {
    switch (c) {
      case '&':
        markup += "&amp;";
        break;
      case '<':
        markup += "&lt;";
        break;
      case '>':
        markup += "&gt;";
        break;
      default:
        markup += c;
    }
  }
  return markup;
}

Notifications::Notifications(sd_bus* bus)
    : bus_(bus),
      tokenMatch_(matchSignal(bus, "ActivationToken", &Notifications::tokenGiven, this)),
      actionMatch_(matchSignal(bus, "ActionInvoked", &Notifications::acted, this)),
      closingMatch_(matchSignal(bus, "NotificationClosed", &Notifications::closed, this)) {}

void Notifications::show(const std::string& summary, const std::string& text) {
  const std::string body = asMarkup(text);
  sd_bus_slot* raw = nullptr;
  const int result = sd_bus_call_method_async(
      bus_, &raw, kService, kPath, kService, "Notify", &Notifications::answered, this,
      "susssasa{sv}i", "Vorda", isThere_ ? shown_ : 0U, kDesktopEntry, summary.c_str(),
      body.c_str(), 2, kDefaultAction, "Show", 2, "desktop-entry", "s", kDesktopEntry, "urgency",
      "y", 1, -1);
  if (result >= 0) call_.reset(raw);
}

int Notifications::answered(sd_bus_message* reply, void* self, sd_bus_error*) {
  auto& notifications = *static_cast<Notifications*>(self);
  std::uint32_t id = 0;
  const bool isError = sd_bus_message_is_method_error(reply, nullptr) != 0;
  if (!isError && sd_bus_message_read(reply, "u", &id) > 0) {
    const char* const sender = sd_bus_message_get_sender(reply);
    notifications.server_ = sender == nullptr ? "" : sender;
    notifications.shown_ = id;
    notifications.isThere_ = true;
  }
  notifications.call_.reset();
  return 0;
}

/// Whether the signal is the server's own, and about what we have shown: anybody may send one.
bool Notifications::isAboutShown(sd_bus_message* signal, std::uint32_t id) const {
  const char* const sender = sd_bus_message_get_sender(signal);
  return shown_ != 0 && id == shown_ && sender != nullptr && server_ == sender;
}

int Notifications::acted(sd_bus_message* signal, void* self, sd_bus_error*) {
  auto& notifications = *static_cast<Notifications*>(self);
  std::uint32_t id = 0;
  const char* action = nullptr;
  if (sd_bus_message_read(signal, "us", &id, &action) <= 0) return 0;
  if (std::string_view(action) == kDefaultAction && notifications.isAboutShown(signal, id)) {
    Q_EMIT notifications.chosen();
  }
  return 0;
}

int Notifications::tokenGiven(sd_bus_message* signal, void* self, sd_bus_error*) {
  auto& notifications = *static_cast<Notifications*>(self);
  std::uint32_t id = 0;
  const char* token = nullptr;
  if (sd_bus_message_read(signal, "us", &id, &token) <= 0) return 0;
  if (notifications.isAboutShown(signal, id) && isActivationToken(token)) {
    Q_EMIT notifications.tokenProvided(token);
  }
  return 0;
}

/// It may be told before the click that closed it.
int Notifications::closed(sd_bus_message* signal, void* self, sd_bus_error*) {
  auto& notifications = *static_cast<Notifications*>(self);
  std::uint32_t id = 0;
  std::uint32_t reason = 0;
  if (sd_bus_message_read(signal, "uu", &id, &reason) <= 0) return 0;
  if (notifications.isAboutShown(signal, id)) notifications.isThere_ = false;
  return 0;
}
