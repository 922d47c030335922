#include "frontends/qt/bus/instance_name.h"

#include <optional>

namespace {

using std::chrono::milliseconds;

constexpr const char* kApplicationInterface = "org.freedesktop.Application";

/// Waits for the answer to a call that was just sent.
struct Answer {
  BusMessage message;

  static int arrived(sd_bus_message* reply, void* self, sd_bus_error*) {
    static_cast<Answer*>(self)->message.reset(sd_bus_message_ref(reply));
    return 0;
  }
  bool isError() const { return sd_bus_message_is_method_error(message.get(), nullptr) > 0; }
};

bool waitFor(SessionBus& bus, Answer& answer, milliseconds patience) {
  return bus.waitUntil([&answer] { return answer.message != nullptr; }, patience);
}

/// Whether the name is ours now; none when the bus does not answer in time.
std::optional<bool> takeName(SessionBus& bus, milliseconds patience) {
  constexpr unsigned kDoNotQueue = 4;
  constexpr unsigned kPrimaryOwner = 1;
  constexpr unsigned kAlreadyOwner = 4;
  Answer answer;
  sd_bus_slot* raw = nullptr;
  sd_bus_call_method_async(bus.get(), &raw, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", "RequestName", &Answer::arrived, &answer, "su",
                           InstanceName::kName, kDoNotQueue);
  const BusSlot slot(raw);
  unsigned reply = 0;
  if (!waitFor(bus, answer, patience) || answer.isError() ||
      sd_bus_message_read(answer.message.get(), "u", &reply) < 0) {
    return std::nullopt;
  }
  return reply == kPrimaryOwner || reply == kAlreadyOwner;
}

/// Asks the owner of the name to show itself; false when it does not answer.
bool activateOther(SessionBus& bus, bool& vanished, milliseconds patience) {
  Answer answer;
  sd_bus_slot* raw = nullptr;
  sd_bus_call_method_async(bus.get(), &raw, InstanceName::kName, InstanceName::kPath,
                           kApplicationInterface, "Activate", &Answer::arrived, &answer, "a{sv}",
                           0);
  const BusSlot slot(raw);
  if (!waitFor(bus, answer, patience)) return false;
  vanished = answer.isError();
  return !vanished;
}

}  // namespace

struct InstanceNameVtable {
  static int activate(sd_bus_message* call, void* self, sd_bus_error*) {
    Q_EMIT static_cast<InstanceName*>(self)->activated();
    return sd_bus_reply_method_return(call, "");
  }
  static const sd_bus_vtable table[];
};

const sd_bus_vtable InstanceNameVtable::table[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Activate", "a{sv}", "", &activate, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

InstanceName::InstanceName(SessionBus& bus) : bus_(bus) {
  sd_bus_slot* raw = nullptr;
  sd_bus_add_object_vtable(bus.get(), &raw, kPath, kApplicationInterface, InstanceNameVtable::table,
                           this);
  object_.reset(raw);
}

InstanceName::Outcome InstanceName::claim(milliseconds patience) {
  // The other instance may just be ending; then the name is free on the next try.
  constexpr int kTries = 3;
  for (int i = 0; i < kTries; ++i) {
    const std::optional<bool> taken = takeName(bus_, patience);
    if (taken.value_or(true)) return Outcome::owned;
    bool vanished = false;
    if (activateOther(bus_, vanished, patience)) return Outcome::activated;
    if (!vanished) return Outcome::silent;
  }
  return Outcome::silent;
}

void InstanceName::claimLater() {
  const auto ignoreAnswer = [](sd_bus_message*, void*, sd_bus_error*) { return 0; };
  sd_bus_slot* raw = nullptr;
  sd_bus_request_name_async(bus_.get(), &raw, kName, 0, ignoreAnswer, this);
  request_.reset(raw);
}
