#include "frontends/qt/wayland/plasma_surface.h"

#include <QGuiApplication>
#include <QWindow>

#ifdef VORDA_PLASMA_SHELL
#include <qpa/qplatformnativeinterface.h>
#include <wayland-client.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "frontends/qt/wayland/menu_surface.h"

// The header first: it makes what the other file defines known outside of it.
#include "plasma-shell-client.h"
// NOLINTNEXTLINE(bugprone-suspicious-include)
#include "plasma-shell-protocol.c"

namespace {

/// The latest version whose requests are used.
constexpr std::uint32_t kVersion = 5;

struct Found {
  org_kde_plasma_shell* shell = nullptr;
};

void noteGlobal(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                std::uint32_t version) {
  if (std::strcmp(interface, org_kde_plasma_shell_interface.name) != 0) return;
  static_cast<Found*>(data)->shell = static_cast<org_kde_plasma_shell*>(wl_registry_bind(
      registry, name, &org_kde_plasma_shell_interface, std::min(version, kVersion)));
}

/// Asks once which words the compositor knows, beside Qt, which goes on reading the connection.
org_kde_plasma_shell* plasmaShellOf(wl_display* display) {
  constexpr wl_registry_listener kListener{&noteGlobal, [](void*, wl_registry*, std::uint32_t) {}};
  wl_event_queue* queue = wl_display_create_queue(display);
  auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue);
  wl_registry* registry = wl_display_get_registry(wrapper);
  wl_proxy_wrapper_destroy(wrapper);
  Found found;
  wl_registry_add_listener(registry, &kListener, &found);
  wl_display_roundtrip_queue(display, queue);
  wl_registry_destroy(registry);
  if (found.shell != nullptr) {
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(found.shell), nullptr);
  }
  wl_event_queue_destroy(queue);
  return found.shell;
}

class ToldSurface : public PlasmaSurface {
 public:
  ToldSurface(org_kde_plasma_shell* shell, wl_surface* surface, std::optional<QPoint> corner)
      : surface_(org_kde_plasma_shell_get_surface(shell, surface)) {
    const std::uint32_t version = org_kde_plasma_surface_get_version(surface_);
    if (version >= ORG_KDE_PLASMA_SURFACE_SET_SKIP_TASKBAR_SINCE_VERSION) {
      org_kde_plasma_surface_set_skip_taskbar(surface_, 1);
    }
    if (version >= ORG_KDE_PLASMA_SURFACE_SET_SKIP_SWITCHER_SINCE_VERSION) {
      org_kde_plasma_surface_set_skip_switcher(surface_, 1);
    }
    if (corner) org_kde_plasma_surface_set_position(surface_, corner->x(), corner->y());
  }
  ~ToldSurface() override { org_kde_plasma_surface_destroy(surface_); }
  ToldSurface(const ToldSurface&) = delete;
  ToldSurface& operator=(const ToldSurface&) = delete;

 private:
  org_kde_plasma_surface* surface_;
};

}  // namespace

std::unique_ptr<PlasmaSurface> PlasmaSurface::of(QWindow& window, std::optional<QPoint> corner) {
  if (!isOnWayland()) return nullptr;
  QPlatformNativeInterface* native = QGuiApplication::platformNativeInterface();
  auto* display = static_cast<wl_display*>(native->nativeResourceForIntegration("wl_display"));
  auto* surface = static_cast<wl_surface*>(native->nativeResourceForWindow("surface", &window));
  if (display == nullptr || surface == nullptr) return nullptr;
  static org_kde_plasma_shell* const shell = plasmaShellOf(display);
  if (shell == nullptr) return nullptr;
  return std::make_unique<ToldSurface>(shell, surface, corner);
}

#else

std::unique_ptr<PlasmaSurface> PlasmaSurface::of(QWindow&, std::optional<QPoint>) {
  return nullptr;
}

#endif
