#pragma once

#include <wayland-client.h>

#include <cstdint>
#include <string>
#include <vector>

/// The globals that the compositor offers. Has an event queue of its own, so that Qt can use the
/// same connection. Events for what was bound here arrive only during roundTrip().
class Registry {
 public:
  struct Global {
    std::uint32_t name;
    std::string interface;
    std::uint32_t version;
  };

  /// Asks, and waits for the answer. `display` outlives it.
  explicit Registry(wl_display* display);
  ~Registry();
  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;

  [[nodiscard]] const std::vector<Global>& globals() const { return globals_; }

  /// That global, at its own version or at `version`, if that is less.
  [[nodiscard]] void* bind(const Global& global, const wl_interface& kind,
                           std::uint32_t version) const;

  /// Waits until the compositor has answered everything so far.
  void roundTrip() const;

 private:
  wl_display* display_;
  wl_event_queue* queue_;
  wl_registry* registry_;
  std::vector<Global> globals_;
};
