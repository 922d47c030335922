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

/// A guess at the top left corner of a window, where nobody knows where the compositor has put it.
/// From left to right in the middle, as with most compositors; but at the top of the screen: with
/// too little room below the window a menu would be asked for above it, and not every compositor
/// keeps that on the screen.
[[nodiscard]] QPoint likelyCorner(QSize window, const QRect& screen);
