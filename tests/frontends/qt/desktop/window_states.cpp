#include "frontends/qt/desktop/window_states.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

/// A connection and what is asked through it.
class Screen {
 public:
  explicit Screen(const std::string& display)
      : connection_(xcb_connect(display.c_str(), nullptr)) {}
  ~Screen() { xcb_disconnect(connection_); }
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  /// Those on the screen. Where nobody manages windows, those of a program are children of the
  /// root, and so are some that it never shows; one of them has the program's name as its title.
  std::vector<xcb_window_t> windows() const {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root), nullptr), &std::free);
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    std::vector<xcb_window_t> shown(first, first + xcb_query_tree_children_length(tree.get()));
    std::erase_if(shown, [this](xcb_window_t window) { return !isShown(window); });
    return shown;
  }

  std::string title(xcb_window_t window) const { return property(window, "_NET_WM_NAME"); }

  void leaveRoomForPanel(std::uint32_t line) const {
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    const std::uint32_t area[] = {0, 0, screen->width_in_pixels, line};
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, screen->root, atom("_NET_WORKAREA"),
                        XCB_ATOM_CARDINAL, 32, 4, area);
    waitUntilHandled();
  }

  void askToClose(xcb_window_t window) const {
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom("WM_PROTOCOLS");
    event.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(connection_, 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
    // A busy server drops what it hasn't read yet of a client that hangs up.
    waitUntilHandled();
  }

  bool hasState(xcb_window_t window, const std::string& state) const {
    const std::string states = property(window, "_NET_WM_STATE");
    const auto* first = reinterpret_cast<const xcb_atom_t*>(states.data());
    const auto* last = first + states.size() / sizeof(xcb_atom_t);
    return std::find(first, last, atom(state)) != last;
  }

 private:
  bool isShown(xcb_window_t window) const {
    const Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection_, xcb_get_window_attributes(connection_, window),
                                        nullptr),
        &std::free);
    return attributes != nullptr && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
  }

  /// Until the server has handled all that was sent to it.
  void waitUntilHandled() const {
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  }

  xcb_atom_t atom(const std::string& name) const {
    const auto length = static_cast<std::uint16_t>(name.size());
    const Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection_, xcb_intern_atom(connection_, 0, length, name.data()),
                              nullptr),
        &std::free);
    return reply->atom;
  }

  std::string property(xcb_window_t window, const std::string& name) const {
    constexpr std::uint32_t kEnough = 1024;  // words
    const auto request =
        xcb_get_property(connection_, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, kEnough);
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_, request, nullptr), &std::free);
    if (reply == nullptr) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
  }

  xcb_connection_t* connection_;
};

}  // namespace

bool keepsOffTaskbar(const std::string& display, const std::string& title) {
  const Screen screen(display);
  bool found = false;
  for (const xcb_window_t window : screen.windows()) {
    if (screen.title(window) != title) continue;
    found = true;
    if (!screen.hasState(window, "_NET_WM_STATE_SKIP_TASKBAR")) return false;
  }
  return found;
}

void leaveRoomForPanel(const std::string& display, int line) {
  Screen(display).leaveRoomForPanel(static_cast<std::uint32_t>(line));
}

void closeWindow(const std::string& display, const std::string& title) {
  const Screen screen(display);
  for (const xcb_window_t window : screen.windows()) {
    if (screen.title(window) == title) screen.askToClose(window);
  }
}
