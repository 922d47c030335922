#pragma once

#include <QPoint>
#include <QSize>

class QRect;

/// The top left corner of a window that is wanted at `corner`: there, or as near as it takes to be
/// wholly in `area`; the area's own where the window is too large for it.
[[nodiscard]] QPoint cornerWithin(QPoint corner, QSize window, const QRect& area);

/// The top left corner of a window beside the icon in a panel: above or below the icon, whichever
/// is nearer to the middle of the screen, and wholly on the screen.
[[nodiscard]] QPoint cornerBeside(QPoint icon, QSize window, const QRect& screen);

/// The top left corner that a window is taken to have of which nobody knows where the compositor
/// has put it: in the middle, as most do. At the top of the screen, all the same: a menu that has
/// no room below would be asked for above the window, and not every compositor keeps it on the
/// screen then.
[[nodiscard]] QPoint likelyCorner(QSize window, const QRect& screen);
