#pragma once

#include <QByteArray>
#include <QIcon>

#include "ui/color.h"

/// The dot that ties a row to its bar in the strip: 8 points wide in a square of 12.
inline constexpr int kDotSquare = 12;

/// Crisp on every screen: it is drawn anew for each pixel density.
QIcon dotIcon(const Color& color);

/// The same as a PNG picture, for a tray host to draw; `scale` pixels per point.
QByteArray dotPng(const Color& color, int scale);
