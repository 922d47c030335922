#include "frontends/qt/desktop/starting_window_manager.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

StartingWindowManager::StartingWindowManager(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
  const auto request =
      xcb_change_window_attributes_checked(connection_, root, XCB_CW_EVENT_MASK, &events);
  EXPECT_EQ(xcb_request_check(connection_, request), nullptr);
}

StartingWindowManager::~StartingWindowManager() {
  xcb_disconnect(connection_);
}

bool StartingWindowManager::losesAWindow() {
  constexpr std::uint8_t kSentBySomebody = 0x80;
  constexpr int kPatience = 60000;  // milliseconds
  pollfd ready{xcb_get_file_descriptor(connection_), POLLIN, 0};
  do {
    while (xcb_generic_event_t* next = xcb_poll_for_event(connection_)) {
      const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(next, &std::free);
      if ((event->response_type & ~kSentBySomebody) == XCB_MAP_REQUEST) return true;
    }
  } while (poll(&ready, 1, kPatience) == 1);
  return false;
}
