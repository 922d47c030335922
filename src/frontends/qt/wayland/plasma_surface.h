#pragma once

#include <QPoint>
#include <memory>
#include <optional>

class QWindow;

/// What Plasma's compositor can be told of a window on Wayland, by its own protocol
/// (org_kde_plasma_shell): its place, and that it belongs in no task bar. xdg-shell, which is all
/// that Qt speaks, can say neither.
class PlasmaSurface {
 public:
  /// Tells it of `window`, which has just been shown and was not drawn yet. `corner` is the top
  /// left corner of where it goes, on the whole desktop; none: where the compositor likes. nullptr
  /// where the compositor is another, or the program was built without its protocol. To be kept as
  /// long as the window is shown.
  [[nodiscard]] static std::unique_ptr<PlasmaSurface> of(QWindow& window,
                                                         std::optional<QPoint> corner);
  virtual ~PlasmaSurface() = default;
};
