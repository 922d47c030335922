#pragma once

#include <QByteArray>
#include <QIcon>

#include "ui/canvas.h"
#include "ui/color.h"

inline constexpr int kDotSquare = static_cast<int>(Dot::kSide);

/// Crisp on every screen: it is drawn anew for each pixel density.
QIcon dotIcon(const Color& color);

/// The same as a PNG picture, for a tray host to draw; `scale` pixels per point.
QByteArray dotPng(const Color& color, int scale);
