#include "frontends/qt/wayland/registry.h"

#include <algorithm>

namespace {

void noteGlobal(void* data, wl_registry*, std::uint32_t name, const char* interface,
                std::uint32_t version) {
  static_cast<std::vector<Registry::Global>*>(data)->push_back({name, interface, version});
}

constexpr wl_registry_listener kRegistryListener{&noteGlobal,
                                                 [](void*, wl_registry*, std::uint32_t) {}};

}  // namespace

Registry::Registry(wl_display* display)
    : display_(display), queue_(wl_display_create_queue(display)) {
  auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue_);
  registry_ = wl_display_get_registry(wrapper);
  wl_proxy_wrapper_destroy(wrapper);
  wl_registry_add_listener(registry_, &kRegistryListener, &globals_);
  roundTrip();
}

Registry::~Registry() {
  wl_registry_destroy(registry_);
  wl_event_queue_destroy(queue_);
}

void* Registry::bind(const Global& global, const wl_interface& kind, std::uint32_t version) const {
  return wl_registry_bind(registry_, global.name, &kind, std::min(global.version, version));
}

void Registry::roundTrip() const {
  wl_display_roundtrip_queue(display_, queue_);
}
