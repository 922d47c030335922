#include "frontends/qt/bus/host_menu.h"

#include <string_view>
#include <utility>
#include <vector>

#include "frontends/qt/bus/host_menu_messages.h"

namespace {

constexpr const char* kInterface = "com.canonical.dbusmenu";

/// Sends a reply that was built in steps, or the error of the step that failed.
int sendReply(int result, sd_bus_message* reply) {
  const BusMessage owned(reply);
  return result < 0 ? result : sd_bus_send(nullptr, reply, nullptr);
}

/// Whether the caller waits for the answer.
bool isAnswered(sd_bus_message* call) {
  return sd_bus_message_get_expect_reply(call) > 0;
}

int noSuchItem(sd_bus_error* error, int id) {
  return sd_bus_error_setf(error, SD_BUS_ERROR_INVALID_ARGS, "no menu item %d", id);
}

}  // namespace

/// The handlers that sd-bus calls.
struct HostMenuVtable {
  static HostMenu& menu(void* data) { return *static_cast<HostMenu*>(data); }

  static int getLayout(sd_bus_message* call, void* data, sd_bus_error* error) {
    int id = 0;
    int depth = 0;
    HostMenuMessages::PropertyNames names;
    int result = sd_bus_message_read(call, "ii", &id, &depth);
    if (result >= 0) result = HostMenuMessages::readNames(call, names);
    if (result < 0) return result;
    const ExportedMenu::Node* node = menu(data).menu_.find(id);
    if (node == nullptr) return noSuchItem(error, id);
    if (id == ExportedMenu::kRootId) menu(data).readRevision_ = menu(data).revision_;

    sd_bus_message* reply = nullptr;
    result = sd_bus_message_new_method_return(call, &reply);
    if (result >= 0) result = sd_bus_message_append(reply, "u", menu(data).revision_);
    if (result >= 0) result = HostMenuMessages::appendLayout(reply, *node, depth, names);
    return sendReply(result, reply);
  }

  static int getGroupProperties(sd_bus_message* call, void* data, sd_bus_error*) {
    std::vector<int> ids;
    HostMenuMessages::PropertyNames names;
    int result = HostMenuMessages::readIds(call, ids);
    if (result >= 0) result = HostMenuMessages::readNames(call, names);
    if (result < 0) return result;

    sd_bus_message* reply = nullptr;
    result = sd_bus_message_new_method_return(call, &reply);
    if (result >= 0) result = sd_bus_message_open_container(reply, 'a', "(ia{sv})");
    for (const int id : ids) {
      const ExportedMenu::Node* node = menu(data).menu_.find(id);
      if (node == nullptr) continue;
      if (result >= 0) result = HostMenuMessages::appendProperties(reply, *node, names);
    }
    if (result >= 0) result = sd_bus_message_close_container(reply);
    return sendReply(result, reply);
  }

  static int getProperty(sd_bus_message* call, void* data, sd_bus_error* error) {
    int id = 0;
    const char* name = nullptr;
    int result = sd_bus_message_read(call, "is", &id, &name);
    if (result < 0) return result;
    const ExportedMenu::Node* node = menu(data).menu_.find(id);
    if (node == nullptr) return noSuchItem(error, id);

    sd_bus_message* reply = nullptr;
    result = sd_bus_message_new_method_return(call, &reply);
    if (result >= 0) result = HostMenuMessages::appendProperty(reply, *node, name);
    return sendReply(result, reply);
  }

  static int event(sd_bus_message* call, void* data, sd_bus_error*) {
    int id = 0;
    const char* kind = nullptr;
    const int result = sd_bus_message_read(call, "is", &id, &kind);
    if (result < 0) return result;
    menu(data).handle(id, kind);
    return sd_bus_reply_method_return(call, "");
  }

  static int eventGroup(sd_bus_message* call, void* data, sd_bus_error*) {
    int result = sd_bus_message_enter_container(call, 'a', "(isvu)");
    while (result >= 0 && (result = sd_bus_message_enter_container(call, 'r', "isvu")) > 0) {
      int id = 0;
      const char* kind = nullptr;
      result = sd_bus_message_read(call, "is", &id, &kind);
      if (result >= 0) menu(data).handle(id, kind);
      if (result >= 0) result = sd_bus_message_skip(call, "vu");
      if (result >= 0) result = sd_bus_message_exit_container(call);
    }
    return result < 0 ? result : sd_bus_reply_method_return(call, "ai", 0);
  }

  static int aboutToShow(sd_bus_message* call, void* data, sd_bus_error*) {
    int id = 0;
    const int result = sd_bus_message_read(call, "i", &id);
    if (result < 0) return result;
    const bool changed = id == ExportedMenu::kRootId && menu(data).announced(isAnswered(call));
    menu(data).announceSubmenu(id);
    return sd_bus_reply_method_return(call, "b", changed ? 1 : 0);
  }

  static int aboutToShowGroup(sd_bus_message* call, void* data, sd_bus_error*) {
    std::vector<int> ids;
    const int result = HostMenuMessages::readIds(call, ids);
    if (result < 0) return result;
    bool changed = false;
    for (const int id : ids) {
      changed |= id == ExportedMenu::kRootId && menu(data).announced(isAnswered(call));
      menu(data).announceSubmenu(id);
    }
    return changed ? sd_bus_reply_method_return(call, "aiai", 1, ExportedMenu::kRootId, 0)
                   : sd_bus_reply_method_return(call, "aiai", 0, 0);
  }

  static int version(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                     sd_bus_error*) {
    return sd_bus_message_append(reply, "u", 3);
  }
  static int textDirection(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                           void*, sd_bus_error*) {
    return sd_bus_message_append(reply, "s", "ltr");
  }
  static int status(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                    sd_bus_error*) {
    return sd_bus_message_append(reply, "s", "normal");
  }
  static int iconThemePath(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                           void*, sd_bus_error*) {
    return sd_bus_message_append(reply, "as", 0);
  }

  static const sd_bus_vtable table[];
};

const sd_bus_vtable HostMenuVtable::table[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Version", "u", &version, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("TextDirection", "s", &textDirection, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", &status, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "as", &iconThemePath, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_METHOD("GetLayout", "iias", "u(ia{sv}av)", &getLayout, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetGroupProperties", "aias", "a(ia{sv})", &getGroupProperties,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetProperty", "is", "v", &getProperty, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Event", "isvu", "", &event, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EventGroup", "a(isvu)", "ai", &eventGroup, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("AboutToShow", "i", "b", &aboutToShow, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("AboutToShowGroup", "ai", "aiai", &aboutToShowGroup, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("ItemsPropertiesUpdated", "a(ia{sv})a(ias)", 0),
    SD_BUS_SIGNAL("LayoutUpdated", "ui", 0),
    SD_BUS_SIGNAL("ItemActivationRequested", "iu", 0),
    SD_BUS_VTABLE_END,
};

HostMenu::HostMenu(sd_bus* bus, ExportedMenu& menu, const HostMenuTimes& times)
    : bus_(bus), menu_(menu), times_(times) {
  sd_bus_slot* raw = nullptr;
  sd_bus_add_object_vtable(bus_, &raw, kPath, kInterface, HostMenuVtable::table, this);
  object_.reset(raw);
  longEnough_.setSingleShot(true);
  longEnough_.setInterval(times.longestTracking);
  connect(&longEnough_, &QTimer::timeout, this, &HostMenu::close);
}

void HostMenu::show(std::shared_ptr<const Menu> menu) {
  if (isOpen_) {
    waiting_ = std::move(menu);
  } else {
    tell(menu_.show(std::move(menu)));
  }
}

void HostMenu::setHost(TrayHostKind host) {
  if (host == menu_.host()) return;
  assumeClosed();
  tell(menu_.setHost(host));
}

void HostMenu::setRoom(ShortMenu::Room room) {
  if (room == menu_.room()) return;
  assumeClosed();
  tell(menu_.setRoom(room));
}

void HostMenu::showStrip(const MemoryPressureView& strip) {
  tell(menu_.showStrip(strip));
}

void HostMenu::showTitles() {
  tell(menu_.showTitles());
}

void HostMenu::assumeClosed() {
  if (isOpen_) close();
}

void HostMenu::hostGone() {
  hostSaysClosed_ = false;
  assumeClosed();
}

/// What AboutToShow answers: whether there is a layout that no host has read yet. Plasma announces
/// each opening twice, and shows the menu in between.
bool HostMenu::announced(bool isAnswered) {
  if (!isOpen_ || sinceOpening_.elapsed() >= times_.oneOpening) {
    isAnswering_ = isAnswered;
    open();
    isAnswering_ = false;
  }
  return signalIsDue_ && revision_ != readRevision_;
}

void HostMenu::open() {
  isOpen_ = false;  // in case it was closed unreported
  waiting_.reset();
  isOpening_ = true;
  Q_EMIT opening();
  isOpening_ = false;
  isOpen_ = true;
  sinceOpening_.start();
  if (!hostSaysClosed_) longEnough_.start();
}

void HostMenu::close() {
  longEnough_.stop();
  isOpen_ = false;
  if (waiting_) show(std::exchange(waiting_, nullptr));
  Q_EMIT closed();
  if (signalIsDue_) tellLayout();
  tellHeldBack();
}

void HostMenu::handle(int id, std::string_view event) {
  if (id == ExportedMenu::kRootId) {
    if (event == "opened" && !isOpen_) open();
    if (event == "closed") {
      hostSaysClosed_ = true;
      if (isOpen_) close();
    }
    return;
  }
  if (event == "opened") announceSubmenu(id);
  if (event != "clicked") return;
  const ExportedMenu::Node* node = menu_.find(id);
  if (node == nullptr || !node->item->enabled || node->item->action == Action::none) return;
  const std::shared_ptr<const MenuItem> item = node->item;
  if (isOpen_) close();
  Q_EMIT chosen(item);
}

void HostMenu::announceSubmenu(int id) {
  const ExportedMenu::Node* node = menu_.find(id);
  if (node != nullptr && node->item && !node->children.empty()) Q_EMIT submenuOpening(node->item);
}

void HostMenu::tell(const ExportedMenu::Change& change) {
  if (change.layout) {
    ++revision_;
    if (isAnswering_) {
      signalIsDue_ = true;
    } else {
      tellLayout();
    }
    return;
  }
  if ((isOpening_ || isOpen_) && menu_.staysStill()) {
    heldBack_.insert(change.relabelled.begin(), change.relabelled.end());
    return;
  }
  if (change.relabelled.empty()) return;

  sd_bus_message* signal = nullptr;
  int result =
      sd_bus_message_new_signal(bus_, &signal, kPath, kInterface, "ItemsPropertiesUpdated");
  const BusMessage owned(signal);
  if (result >= 0) result = sd_bus_message_open_container(signal, 'a', "(ia{sv})");
  for (const int id : change.relabelled) {
    const HostMenuMessages::PropertyNames all;
    if (result >= 0) result = HostMenuMessages::appendProperties(signal, *menu_.find(id), all);
  }
  if (result >= 0) result = sd_bus_message_close_container(signal);
  if (result >= 0) result = sd_bus_message_append(signal, "a(ias)", 0);
  if (result >= 0) sd_bus_send(bus_, signal, nullptr);
}

void HostMenu::tellHeldBack() {
  ExportedMenu::Change change;
  for (const int id : std::exchange(heldBack_, {})) {
    if (menu_.find(id) != nullptr) change.relabelled.push_back(id);
  }
  tell(change);
}

void HostMenu::tellLayout() {
  signalIsDue_ = false;
  sd_bus_emit_signal(bus_, kPath, kInterface, "LayoutUpdated", "ui", revision_,
                     ExportedMenu::kRootId);
}
