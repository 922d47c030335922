#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

/// What libxcb hands out with malloc.
struct XcbFree {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using XcbReply = std::unique_ptr<Reply, XcbFree>;

namespace X11Display {

/// Qt's own connection; nullptr when the display is not an X server.
xcb_connection_t* connection();

xcb_window_t rootWindow();

/// XCB_ATOM_NONE when the connection is broken.
xcb_atom_t atom(const char* name);

}  // namespace X11Display
