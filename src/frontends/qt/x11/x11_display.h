#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>

/// Frees the replies of libxcb, which are allocated with malloc.
struct XcbFree {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using XcbReply = std::unique_ptr<Reply, XcbFree>;

namespace X11Display {

/// Qt's own connection; nullptr when the display is not an X server.
xcb_connection_t* connection();

/// The number of the display's screen that the program is on.
int screenNumber();

/// XCB_ATOM_NONE when the connection is broken.
xcb_atom_t atom(const std::string& name);

}  // namespace X11Display
