// Plays the pointer and the keyboard of Plasma's compositor on Wayland, as told line by line:
//
//   move X Y       the pointer to that place
//   press BUTTON   and release BUTTON: 1 left, 2 middle, 3 right
//   key NAME       pressed and released: Up, Down, Left, Right, Return, Escape
//
// The compositor must have been told not to ask who may do that
// (KWIN_WAYLAND_NO_PERMISSION_CHECKS=1).
#include <linux/input-event-codes.h>
#include <wayland-client.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>

// The header first: it makes what the other file defines known outside of it.
#include "fake-input-client.h"
// NOLINTNEXTLINE(bugprone-suspicious-include)
#include "fake-input-protocol.c"

namespace {

/// The first version with absolute places and keys.
constexpr std::uint32_t kVersion = 4;

constexpr std::pair<const char*, std::uint32_t> kKeys[] = {
    {"Up", KEY_UP},       {"Down", KEY_DOWN},    {"Left", KEY_LEFT},
    {"Right", KEY_RIGHT}, {"Return", KEY_ENTER}, {"Escape", KEY_ESC},
};
constexpr std::uint32_t kButtons[] = {BTN_LEFT, BTN_MIDDLE, BTN_RIGHT};

void noteGlobal(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                std::uint32_t version) {
  if (std::strcmp(interface, org_kde_kwin_fake_input_interface.name) != 0) return;
  if (version < kVersion) return;
  *static_cast<org_kde_kwin_fake_input**>(data) = static_cast<org_kde_kwin_fake_input*>(
      wl_registry_bind(registry, name, &org_kde_kwin_fake_input_interface, kVersion));
}

/// Returns whether `line` is one of the lines above.
bool play(org_kde_kwin_fake_input* input, const std::string& line) {
  std::istringstream words(line);
  std::string what;
  words >> what;
  if (what == "move") {
    double x = 0;
    double y = 0;
    words >> x >> y;
    org_kde_kwin_fake_input_pointer_motion_absolute(input, wl_fixed_from_double(x),
                                                    wl_fixed_from_double(y));
  } else if (what == "press" || what == "release") {
    std::size_t button = 0;
    words >> button;
    if (button < 1 || button > std::size(kButtons)) return false;
    org_kde_kwin_fake_input_button(input, kButtons[button - 1], what == "press" ? 1 : 0);
  } else if (what == "key") {
    std::string name;
    words >> name;
    const auto* key =
        std::ranges::find_if(kKeys, [&name](const auto& known) { return name == known.first; });
    if (key == std::end(kKeys)) return false;
    org_kde_kwin_fake_input_keyboard_key(input, key->second, 1);
    org_kde_kwin_fake_input_keyboard_key(input, key->second, 0);
  } else {
    return false;
  }
  return !words.fail();
}

}  // namespace

int main() {
  wl_display* display = wl_display_connect(nullptr);
  if (display == nullptr) {
    std::fputs("play_input: no compositor\n", stderr);
    return 1;
  }
  org_kde_kwin_fake_input* input = nullptr;
  constexpr wl_registry_listener kListener{&noteGlobal, [](void*, wl_registry*, std::uint32_t) {}};
  wl_registry_add_listener(wl_display_get_registry(display), &kListener, &input);
  wl_display_roundtrip(display);
  if (input == nullptr) {
    std::fputs("play_input: the compositor does not let its input be played\n", stderr);
    return 1;
  }
  org_kde_kwin_fake_input_authenticate(input, "play_input", "test");
  for (std::string line; std::getline(std::cin, line);) {
    if (!play(input, line)) {
      std::fprintf(stderr, "play_input: what is \"%s\"?\n", line.c_str());
      return 1;
    }
    if (wl_display_roundtrip(display) < 0) return 1;
  }
}
