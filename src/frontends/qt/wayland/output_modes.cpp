#include "frontends/qt/wayland/menu_surface.h"

#ifdef VORDA_PLASMA_SHELL
#include <wayland-client.h>

#include <cstdint>
#include <list>
#include <memory>

#include "frontends/qt/wayland/registry.h"

namespace {

/// The first version that tells the scale.
constexpr std::uint32_t kOutputVersion = 2;

struct Output {
  wl_output* proxy = nullptr;
  bool isTurned = false;
  QSize pixels;
  int scale = 1;
};

void noteGeometry(void* data, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                  std::int32_t, const char*, const char*, std::int32_t transform) {
  // The odd ones turn by a quarter.
  static_cast<Output*>(data)->isTurned = transform % 2 == 1;
}

void noteMode(void* data, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height,
              std::int32_t) {
  if ((flags & WL_OUTPUT_MODE_CURRENT) == 0) return;
  static_cast<Output*>(data)->pixels = {width, height};
}

void noteScale(void* data, wl_output*, std::int32_t scale) {
  static_cast<Output*>(data)->scale = scale;
}

constexpr wl_output_listener kOutputListener{&noteGeometry, &noteMode, [](void*, wl_output*) {},
                                             &noteScale};

}  // namespace

std::vector<OutputMode> outputModes() {
  if (!isOnWayland()) return {};
  // A connection of its own: on Qt's, Qt would be told of screens that it has not asked for.
  const std::unique_ptr<wl_display, decltype(&wl_display_disconnect)> display(
      wl_display_connect(nullptr), &wl_display_disconnect);
  if (display == nullptr) return {};
  const Registry registry(display.get());
  std::list<Output> outputs;
  for (const Registry::Global& global : registry.globals()) {
    if (global.interface != wl_output_interface.name) continue;
    Output& output = outputs.emplace_back();
    output.proxy =
        static_cast<wl_output*>(registry.bind(global, wl_output_interface, kOutputVersion));
    wl_output_add_listener(output.proxy, &kOutputListener, &output);
  }
  registry.roundTrip();
  std::vector<OutputMode> modes;
  for (const Output& output : outputs) {
    wl_output_destroy(output.proxy);
    modes.push_back({output.isTurned ? output.pixels.transposed() : output.pixels, output.scale});
  }
  return modes;
}

#else

std::vector<OutputMode> outputModes() {
  return {};
}

#endif
