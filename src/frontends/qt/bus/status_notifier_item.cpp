#include "frontends/qt/bus/status_notifier_item.h"

#include <QtEndian>
#include <string_view>
#include <utility>

#include "frontends/qt/bus/activation_token.h"

namespace {

constexpr const char* kItemInterface = "org.kde.StatusNotifierItem";

int appendString(sd_bus_message* reply, const std::string& text) {
  return sd_bus_message_append(reply, "s", text.c_str());
}

/// One picture: width, height, and the pixels as ARGB in network byte order.
int appendPicture(sd_bus_message* reply, const QImage& picture) {
  const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
  std::vector<quint32> pixels;
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const quint32*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) pixels.push_back(qToBigEndian(line[x]));
  }
  int result = sd_bus_message_open_container(reply, 'r', "iiay");
  if (result >= 0) result = sd_bus_message_append(reply, "ii", image.width(), image.height());
  if (result >= 0) {
    result =
        sd_bus_message_append_array(reply, 'y', pixels.data(), pixels.size() * sizeof(quint32));
  }
  return result < 0 ? result : sd_bus_message_close_container(reply);
}

}  // namespace

/// The handlers that sd-bus calls.
struct StatusNotifierItemVtable {
  using Item = StatusNotifierItem;

  static const Item& item(void* data) { return *static_cast<const Item*>(data); }

  static int constant(sd_bus*, const char*, const char*, const char* property,
                      sd_bus_message* reply, void*, sd_bus_error*) {
    const std::string_view name = property;
    if (name == "Category") return appendString(reply, "SystemServices");
    if (name == "Id") return appendString(reply, "vorda");
    return appendString(reply, "");
  }
  static int title(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                   void* data, sd_bus_error*) {
    return appendString(reply, item(data).quiet_ ? std::string() : item(data).title_);
  }
  static int status(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                    void* data, sd_bus_error*) {
    return appendString(reply, item(data).status());
  }
  static int menu(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* data,
                  sd_bus_error*) {
    return sd_bus_message_append(reply, "o", item(data).menuPath_.c_str());
  }
  static int itemIsMenu(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                        void*, sd_bus_error*) {
    return sd_bus_message_append(reply, "b", 0);
  }
  static int windowId(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                      sd_bus_error*) {
    return sd_bus_message_append(reply, "i", 0);
  }
  static int noPicture(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                       sd_bus_error*) {
    return sd_bus_message_append(reply, "a(iiay)", 0);
  }
  static int pictures(sd_bus*, const char*, const char*, const char* property,
                      sd_bus_message* reply, void* data, sd_bus_error*) {
    const bool isUsual = std::string_view(property) == "IconPixmap";
    const StatusNotifierItem::Pictures& all = item(data).pictures_;
    int result = sd_bus_message_open_container(reply, 'a', "(iiay)");
    for (const QImage& picture : isUsual ? all.usual : all.attention) {
      if (result >= 0) result = appendPicture(reply, picture);
    }
    return result < 0 ? result : sd_bus_message_close_container(reply);
  }
  /// All of the text is in the tooltip's title, because hosts show the title as plain text and the
  /// description as markup. There is no IconAccessibleDesc either: some hosts show it where the
  /// description is empty.
  static int toolTip(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                     void* data, sd_bus_error*) {
    const char* text = item(data).quiet_ ? "" : item(data).toolTip_.c_str();
    return sd_bus_message_append(reply, "(sa(iiay)ss)", "", 0, text, "");
  }

  static int clicked(sd_bus_message* call, void* data, sd_bus_error*) {
    int x = 0;
    int y = 0;
    sd_bus_message_read(call, "ii", &x, &y);
    Q_EMIT static_cast<Item*>(data)->activated({x, y});
    return sd_bus_reply_method_return(call, "");
  }
  static int tokenProvided(sd_bus_message* call, void* data, sd_bus_error*) {
    const char* token = "";
    if (sd_bus_message_read(call, "s", &token) >= 0 && isActivationToken(token)) {
      Q_EMIT static_cast<Item*>(data)->tokenProvided(token);
    }
    return sd_bus_reply_method_return(call, "");
  }
  static int scrolled(sd_bus_message* call, void*, sd_bus_error*) {
    return sd_bus_reply_method_return(call, "");
  }

  static const sd_bus_vtable table[];
};

const sd_bus_vtable StatusNotifierItemVtable::table[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Category", "s", &constant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Id", "s", &constant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Title", "s", &title, 0, 0),
    SD_BUS_PROPERTY("Status", "s", &status, 0, 0),
    SD_BUS_PROPERTY("WindowId", "i", &windowId, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "s", &constant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconName", "s", &constant, 0, 0),
    SD_BUS_PROPERTY("IconPixmap", "a(iiay)", &pictures, 0, 0),
    SD_BUS_PROPERTY("OverlayIconName", "s", &constant, 0, 0),
    SD_BUS_PROPERTY("OverlayIconPixmap", "a(iiay)", &noPicture, 0, 0),
    SD_BUS_PROPERTY("AttentionIconName", "s", &constant, 0, 0),
    SD_BUS_PROPERTY("AttentionIconPixmap", "a(iiay)", &pictures, 0, 0),
    SD_BUS_PROPERTY("AttentionMovieName", "s", &constant, 0, 0),
    SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", &toolTip, 0, 0),
    SD_BUS_PROPERTY("ItemIsMenu", "b", &itemIsMenu, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Menu", "o", &menu, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_METHOD("Activate", "ii", "", &clicked, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("SecondaryActivate", "ii", "", &clicked, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ContextMenu", "ii", "", &clicked, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ProvideXdgActivationToken", "s", "", &tokenProvided, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Scroll", "is", "", &scrolled, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("NewTitle", "", 0),
    SD_BUS_SIGNAL("NewIcon", "", 0),
    SD_BUS_SIGNAL("NewToolTip", "", 0),
    SD_BUS_SIGNAL("NewStatus", "s", 0),
    SD_BUS_VTABLE_END,
};

StatusNotifierItem::StatusNotifierItem(sd_bus* bus, Pictures pictures, std::string menuPath)
    : bus_(bus), pictures_(std::move(pictures)), menuPath_(std::move(menuPath)) {
  sd_bus_slot* raw = nullptr;
  sd_bus_add_object_vtable(bus_, &raw, kPath, kItemInterface, StatusNotifierItemVtable::table,
                           this);
  object_.reset(raw);
}

void StatusNotifierItem::setTitle(const std::string& title) {
  if (title == title_) return;
  title_ = title;
  if (!quiet_) sd_bus_emit_signal(bus_, kPath, kItemInterface, "NewTitle", "");
}

void StatusNotifierItem::setToolTip(const std::string& toolTip) {
  if (toolTip == toolTip_) return;
  toolTip_ = toolTip;
  if (!quiet_) sd_bus_emit_signal(bus_, kPath, kItemInterface, "NewToolTip", "");
}

void StatusNotifierItem::setQuiet(bool quiet) {
  if (quiet == quiet_) return;
  quiet_ = quiet;
  sd_bus_emit_signal(bus_, kPath, kItemInterface, "NewTitle", "");
  sd_bus_emit_signal(bus_, kPath, kItemInterface, "NewToolTip", "");
}

void StatusNotifierItem::setNeedsAttention(bool needsAttention) {
  if (needsAttention == needsAttention_) return;
  needsAttention_ = needsAttention;
  sd_bus_emit_signal(bus_, kPath, kItemInterface, "NewStatus", "s", status());
}
