#include "frontends/qt/wayland/plasma_surface.h"

#include <QGuiApplication>
#include <QWindow>

#ifdef VORDA_PLASMA_SHELL
#include <qpa/qplatformnativeinterface.h>
#include <wayland-client.h>

#include <cstdint>

#include "frontends/qt/wayland/menu_surface.h"
#include "frontends/qt/wayland/registry.h"

// The header first: it makes what the other file defines known outside of it.
#include "plasma-shell-client.h"
// NOLINTNEXTLINE(bugprone-suspicious-include)
#include "plasma-shell-protocol.c"

namespace {

/// The latest version whose requests are used.
constexpr std::uint32_t kVersion = 5;

org_kde_plasma_shell* plasmaShellOf(wl_display* display) {
  const Registry registry(display);
  for (const Registry::Global& global : registry.globals()) {
    if (global.interface != org_kde_plasma_shell_interface.name) continue;
    auto* shell = static_cast<org_kde_plasma_shell*>(
        registry.bind(global, org_kde_plasma_shell_interface, kVersion));
    // Qt's own queue outlives the registry's.
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(shell), nullptr);
    return shell;
  }
  return nullptr;
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
