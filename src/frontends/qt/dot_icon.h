#pragma once

#include <QByteArray>
#include <QIcon>

#include "ui/canvas.h"
#include "ui/color.h"

inline constexpr int kDotSquare = static_cast<int>(Dot::kSide);

/// A process's dot. It is drawn for each pixel density, so that it is sharp on every screen.
QIcon dotIcon(const Color& color);

/// The same as a PNG picture for a tray host, with `scale` pixels per point.
QByteArray dotPng(const Color& color, int scale);
